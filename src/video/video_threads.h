// The two threads of the live video, and the events they sleep on.
#pragma once

namespace video {

// Creates the events and starts the stream thread and the display thread, which then sleep. A call after a restart of
// the library starts new ones; those of before end by themselves. Main thread.
void startVideoThreads();

}  // namespace video
