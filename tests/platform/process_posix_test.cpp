#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/process.h"

namespace platform {
namespace {

TEST(ExitCode, SuccessIsZero) {
    EXPECT_EQ(exitCode(0), 0);
}

TEST(ExitCode, IsTheLowByteOfTheResult) {
    EXPECT_EQ(exitCode(12), 12);
    EXPECT_EQ(exitCode(9003), 9003 & 0xFF);
}

TEST(ExitCode, FailureNeverReadsAsSuccess) {
    EXPECT_EQ(exitCode(0x100), 255);
    EXPECT_EQ(exitCode(0x2400), 255);
    EXPECT_EQ(exitCode(0xFFFFFFFF), 255);
}

TEST(StandardStreams, MissingOnesAreFilledSoThatNoFileTakesTheirPlace) {
    EXPECT_EXIT(
        {
            close(STDIN_FILENO);
            close(STDOUT_FILENO);
            secureStandardStreams();
            _exit(open("/dev/null", O_RDONLY) > STDERR_FILENO ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, ThoseThatAreThereStay) {
    EXPECT_EXIT(
        {
            const int before = open("/dev/null", O_RDONLY);
            close(before);
            secureStandardStreams();
            _exit(open("/dev/null", O_RDONLY) == before ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace platform
