#include "platform/process.h"

#include <windows.h>

namespace platform {

// The C library keeps the places of the standard streams free by itself.
void secureStandardStreams() {}

int outputColumns() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) ? info.dwSize.X : 0;
}

int exitCode(uint32_t result) {
    return static_cast<int>(result);
}

}  // namespace platform
