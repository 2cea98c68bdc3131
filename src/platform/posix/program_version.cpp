#include "platform/program_version.h"

namespace platform {

namespace {

constexpr uint32_t words(uint32_t high, uint32_t low) {
    return high << 16 | (low & 0xFFFF);
}

}  // namespace

bool programVersion(ProgramVersion& version) {
    version.most = words(TAMTEST_VERSION_MAJOR, TAMTEST_VERSION_MINOR);
    version.least = words(TAMTEST_VERSION_PATCH, TAMTEST_VERSION_TWEAK);
    return true;
}

}  // namespace platform
