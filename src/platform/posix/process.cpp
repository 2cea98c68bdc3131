#include "platform/process.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>

namespace platform {

void secureStandardStreams() {
    // The lowest free descriptor is given out first, so this ends with one above the standard ones.
    int descriptor = open("/dev/null", O_RDWR);
    while (descriptor >= STDIN_FILENO && descriptor <= STDERR_FILENO) {
        descriptor = open("/dev/null", O_RDWR);
    }
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

int outputColumns() {
    constexpr int kUsualColumns = 80;
    if (isatty(STDOUT_FILENO) == 0) {
        return 0;
    }
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

// The system's signal ends the process.
void flushOutput() {
    std::fflush(stdout);
}

int exitCode(uint32_t result) {
    constexpr uint32_t kKept = 0xFF;
    const uint32_t code = result & kKept;
    return static_cast<int>(result != 0 && code == 0 ? kKept : code);
}

}  // namespace platform
