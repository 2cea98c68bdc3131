#include "platform/process.h"

#include <io.h>
#include <stdio.h>

namespace platform {

// The C library keeps the places of the standard streams free by itself.
void secureStandardStreams() {}

bool outputIsTerminal() {
    return _isatty(_fileno(stdout)) != 0;
}

int exitCode(uint32_t result) {
    return static_cast<int>(result);
}

}  // namespace platform
