#include "platform/program_version.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string word(uint32_t value) {
    return std::to_string(value >> 16) + "." + std::to_string(value & 0xFFFF);
}

TEST(ProgramVersion, IsThatOfTheProject) {
    platform::ProgramVersion version;
    ASSERT_TRUE(platform::programVersion(version));
    EXPECT_EQ(word(version.most) + "." + word(version.least), PROGRAM_VERSION);
}

}  // namespace
