// The running program's own version.
#pragma once

#include <cstdint>

namespace platform {

// Two words of two 16-bit numbers each, high half first: major.minor, then patch.build.
struct ProgramVersion {
    uint32_t most = 0;
    uint32_t least = 0;
};

// False when the program carries no version.
bool programVersion(ProgramVersion& version);

}  // namespace platform
