// The tester's life: start-up, one line after the other, the end. Main thread only.
#pragma once

#include <cstdint>

namespace console {

// Runs the whole tester: link start, the script that the arguments name, then line by line until Quit. Returns the
// scanner access library's last result, the process's exit code.
uint32_t runTester(int argumentCount, char** arguments);

// Operation.
void quit();

}  // namespace console
