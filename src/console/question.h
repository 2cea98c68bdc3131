// A question put to the operator in the middle of an operation. Main thread only.
#pragma once

#include <string>

namespace console {

// Prints the question on the console and reads one line of the console's input, however long it is. Returns it without
// its line end; empty when there is none. Neither reaches the log.
std::string ask(const char* question);

}  // namespace console
