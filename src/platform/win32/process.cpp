#include "platform/process.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "console.h"

namespace platform {

// The C library keeps the places of the standard streams free by itself.
void secureStandardStreams() {}

int outputColumns() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) ? info.dwSize.X : 0;
}

// The C library tells of a failed write by the stream's mark alone. A pipe fails when its other end is closed.
void flushOutput() {
    std::fflush(stdout);
    if (std::ferror(stdout) != 0 && GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_PIPE) {
        putConsoleBack();
        ExitProcess(EXIT_FAILURE);
    }
}

int exitCode(uint32_t result) {
    return static_cast<int>(result);
}

}  // namespace platform
