// From a line of text to a running operation. Main thread only.
#pragma once

namespace console {

// Cuts the line into words in place and runs the operation that its first word names, or the script of that name.
void dispatchLine(char* line);

}  // namespace console
