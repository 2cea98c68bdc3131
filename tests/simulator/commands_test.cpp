// What a scanner answers to each command.
#include <string>

#include "hoxi/hoxi_codes.h"
#include "simulator_test.h"

namespace simulator {
namespace {

using CommandsTest = SimulatorTest;

TEST_F(CommandsTest, NopIsReportedComplete) {
    open();
    put(0, hoxi::CMD_NOP, 41);
    const SeenReport report = next();
    EXPECT_EQ(report.brief(), "1:3:41");
    EXPECT_EQ(report.size, 0u);
}

TEST_F(CommandsTest, VersionHasEveryFieldAtItsPlace) {
    openText(R"(
[[scanner]]
make = "MAKER"
model = "MX1300"
serial = "12345"
year = 2001
month = 2
day = 3
software_version = "4.56"
software_year = 2007
software_month = 8
software_day = 9
)");
    put(0, hoxi::CMD_SEND_VERS, 5);
    EXPECT_EQ(next().brief(), "133:1:5");
    const SeenReport version = next();
    EXPECT_EQ(version.brief(), "4:3:5");
    EXPECT_EQ(version.size, 60u);
    EXPECT_EQ(version.text(20, 8), "MAKER");
    EXPECT_EQ(version.text(28, 16), "MX1300");
    EXPECT_EQ(version.text(44, 16), "12345");
    EXPECT_EQ(version.word(60), 2001u | 2u << 16 | 3u << 24);
    EXPECT_EQ(version.text(64, 12), "4.56");
    EXPECT_EQ(version.word(76), 2007u | 8u << 16 | 9u << 24);
    EXPECT_EQ(next().brief(), "133:3:5");
}

TEST_F(CommandsTest, ImageVersionIsAText) {
    openText("[[scanner]]\nimage_version = '7.8'");
    put(0, hoxi::CMD_SEND_IMG_VERS, 6);
    EXPECT_EQ(next().brief(), "133:1:6");
    const SeenReport version = next();
    EXPECT_EQ(version.brief(), "7:3:6");
    EXPECT_EQ(version.size, 4u);
    EXPECT_EQ(version.text(20, 168), "7.8");
    EXPECT_EQ(next().brief(), "133:3:6");
}

TEST_F(CommandsTest, CommandWithoutAMeaningIsPendingThenComplete) {
    open();
    put(0, hoxi::CMD_CONFIG_HAND_SPEED, 7);
    put(0, 0xFFFFFFFF, 8);
    EXPECT_EQ(nextBriefs(4), "133:1:7 133:3:7 133:1:8 133:3:8");
}

TEST_F(CommandsTest, AnswersComeInTheOrderOfTheCommands) {
    openText("[[scanner]]\nlatency_ms = 20\nwork_ms = 30000\n");
    put(0, hoxi::CMD_SEND_VERS, 1);
    put(0, hoxi::CMD_NOP, 2);
    put(0, hoxi::CMD_CONFIG_HAND_SPEED, 3);
    EXPECT_EQ(nextBriefs(6), "133:1:1 4:3:1 133:3:1 1:3:2 133:1:3 133:3:3");
}

TEST_F(CommandsTest, EachScannerAnswersForItself) {
    openText("library.scanners = 2");
    put(1, hoxi::CMD_NOP, 1);
    put(0, hoxi::CMD_SEND_VERS, 2);
    EXPECT_EQ(next(1).brief(), "1:3:1");
    EXPECT_EQ(next(0).brief(), "133:1:2");
    EXPECT_EQ(next(0).text(44, 16), "SIM-0001");
}

TEST_F(CommandsTest, SameCommandsBringTheSameBytes) {
    std::string runs[2];
    for (std::string& run : runs) {
        openText("[[report]]\ncode = 132\nwords = [1, 2]\nafter_commands = 2\n");
        put(0, hoxi::CMD_SEND_VERS, 1);
        for (int i = 0; i < 3; ++i) {
            const SeenReport report = next();
            run.append(report.bytes.begin(), report.bytes.end());
        }
        put(0, hoxi::CMD_NOP, 2);
        HoxiTerminate();
        chooseText("# another, so that the scanners are made anew");
        open();
        HoxiTerminate();
    }
    EXPECT_EQ(runs[0], runs[1]);
    EXPECT_EQ(runs[0].size(), 3u * 188);
}

}  // namespace
}  // namespace simulator
