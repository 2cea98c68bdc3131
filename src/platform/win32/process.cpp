#include "platform/process.h"

namespace platform {

// The C library keeps the places of the standard streams free by itself.
void secureStandardStreams() {}

int exitCode(uint32_t result) {
    return static_cast<int>(result);
}

}  // namespace platform
