// A clock that runs faster than the world, for tests that live through pauses of half a minute.
#pragma once

namespace support {

// How many milliseconds of the program pass in one of the world; 1 at start. Call it while nothing sleeps.
void setClockSpeed(double speed);

}  // namespace support
