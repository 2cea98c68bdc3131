#include <gtest/gtest.h>

#include "platform/process.h"

namespace platform {
namespace {

TEST(ExitCode, IsTheWholeResult) {
    EXPECT_EQ(exitCode(0), 0);
    EXPECT_EQ(exitCode(9003), 9003);
    EXPECT_EQ(exitCode(0xFFFFFFFF), -1);
}

}  // namespace
}  // namespace platform
