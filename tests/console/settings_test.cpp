#include "console/settings.h"

#include <cstdio>

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::fakeHoxi;
using support::fakePlatform;
using support::makeReport;
using support::SleptTooLong;

const char kWaiting[] = "TamTest: waiting - enter blank or CR to continue, ESC to exit scripts\n";
const char kEventWaiting[] =
    "TamTest: waiting for scanner status event\n         enter blank or CR to abandon wait or ESC to exit scripts\n";
const char kCaptureWaiting[] =
    "TamTest: waiting for capture progress message\n         enter any char to abandon wait or ESC to exit scripts\n";

class Settings : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
        scannerlink::state.quiet = 1;
        state.depth = 1;
        state.script = std::tmpfile();
    }

    static void strikeAt(uint64_t ms, const std::string& keys) {
        fakePlatform().at.emplace(ms, [=] { fakePlatform().keys = keys; });
    }

    static bool inScript() { return state.depth == 1; }
};

TEST_F(Settings, WaitLastsItsTime) {
    EXPECT_EQ(type("w 50"), kWaiting);
    EXPECT_EQ(fakePlatform().nowMs, 50u);
}

TEST_F(Settings, WaitCountsPassesOfTenMilliseconds) {
    type("Wait 41");
    EXPECT_EQ(fakePlatform().sleeps.size(), 5u);
}

TEST_F(Settings, WaitTakesHexadecimal) {
    type("w 0x20");
    EXPECT_EQ(fakePlatform().sleeps.size(), 4u);
}

TEST_F(Settings, WaitOfNegativeTimeIsOverAtOnce) {
    EXPECT_EQ(type("w -5"), kWaiting);
    EXPECT_TRUE(fakePlatform().sleeps.empty());
}

TEST_F(Settings, WaitWithoutTimeLastsUntilAKey) {
    strikeAt(700, " ");
    EXPECT_EQ(type("w"), kWaiting);
    EXPECT_EQ(fakePlatform().nowMs, 700u);
    EXPECT_EQ(fakePlatform().keysRead, 1);
    EXPECT_TRUE(inScript());
}

TEST_F(Settings, WaitWithTimeEndsEarlyAtAKey) {
    strikeAt(30, "x");
    type("w 1000");
    EXPECT_EQ(fakePlatform().nowMs, 30u);
    EXPECT_TRUE(inScript());
}

TEST_F(Settings, EscInAWaitLeavesAllScripts) {
    strikeAt(30, "\x1B");
    type("w");
    EXPECT_FALSE(inScript());
}

TEST_F(Settings, KeyStruckAfterTheTimeIsStillTaken) {
    strikeAt(50, "\x1B");
    type("w 50");
    EXPECT_FALSE(inScript());
}

TEST_F(Settings, WaitWithoutTimeAndWithoutKeyboardNeverEnds) {
    state.keyboardEnabled = 0;
    fakePlatform().keys = "x";
    EXPECT_THROW(wait(), SleptTooLong);
    EXPECT_EQ(fakePlatform().keysRead, 0);
}

TEST_F(Settings, WaitWithTimeAndWithoutKeyboardLastsItsTime) {
    state.keyboardEnabled = 0;
    fakePlatform().keys = "x";
    type("w 50");
    EXPECT_EQ(fakePlatform().nowMs, 50u);
    EXPECT_EQ(fakePlatform().keysRead, 0);
}

TEST_F(Settings, WaitShowsReportsMeanwhile) {
    scannerlink::state.quiet = 0;
    deliverAt(20, makeReport(1, 3, 1));
    EXPECT_EQ(type("w 50"),
              std::string(kWaiting) + "Mon Nov 16 05:08:38 2026\n  scanner: 0  code: 1  state: 3  tag: 1  size: 0\n");
}

TEST_F(Settings, EventWaitLastsUntilTheStateOfTheLastCommandsTagMatches) {
    scannerlink::state.nextTag = 10;
    deliverAt(50, makeReport(133, 3, 8));
    deliverAt(150, makeReport(133, 1, 9));
    deliverAt(250, makeReport(133, 2, 9));
    deliverAt(400, makeReport(133, 3, 9));
    EXPECT_EQ(type("ew 133 3"), kEventWaiting);
    EXPECT_EQ(fakePlatform().nowMs, 400u);
}

TEST_F(Settings, EventWaitRightAfterACommandTakesItsReport) {
    fakeHoxi().onPutCommand = [](uint32_t, const std::vector<uint8_t>& packet) {
        deliver(makeReport(1, 3, packet[4]));
        return 0u;
    };
    type("tag 77");
    type("nop");
    EXPECT_EQ(type("ew 1 3"), kEventWaiting);
    EXPECT_LE(fakePlatform().nowMs, 10u);
}

TEST_F(Settings, EventWaitWithTagOffsetOneTakesTheCommandBefore) {
    scannerlink::state.nextTag = 10;
    deliver(makeReport(133, 3, 8));
    type("ew 133 3 1");
    EXPECT_LE(fakePlatform().nowMs, 10u);
}

TEST_F(Settings, EventWaitTakesNegativeStates) {
    scannerlink::state.nextTag = 10;
    deliver(makeReport(133, -5, 9));
    type("ew 0x85 -5");
    EXPECT_LE(fakePlatform().nowMs, 10u);
}

TEST_F(Settings, EventWaitIsAbandonedByAKey) {
    strikeAt(300, "x");
    EXPECT_EQ(type("ew 133 3"), kEventWaiting);
    EXPECT_TRUE(inScript());
    EXPECT_EQ(fakePlatform().keysRead, 1);
}

TEST_F(Settings, EscInAnEventWaitLeavesAllScripts) {
    strikeAt(300, "\x1B");
    type("ew 133 3");
    EXPECT_FALSE(inScript());
}

TEST_F(Settings, EventWaitOnlyLooksAtTheKeyboardWhilePollingIsEnabled) {
    state.keyboardEnabled = 0;
    fakePlatform().keys = "x";
    EXPECT_THROW(type("ew 133 3"), SleptTooLong);
    ::testing::internal::GetCapturedStdout();
}

TEST_F(Settings, EventWaitNeedsCodeAndState) {
    for (const char* line : {"ew", "ew 133"})
        EXPECT_EQ(type(line).substr(0, 59), "TamTest: Missing parameter - syntax for Event_Wait(ew) is:\n");
}

TEST_F(Settings, EventWaitRefusesACodeThatNoReportIsFiledUnder) {
    EXPECT_EQ(type("ew 256 3"), "TamTest: no status has code 256, codes end at 255\n");
    EXPECT_TRUE(fakePlatform().sleeps.empty());
    scannerlink::state.nextTag = 10;
    deliver(makeReport(255, 3, 9));
    EXPECT_EQ(type("ew 255 3"), kEventWaiting);
}

TEST_F(Settings, CaptureWaitLastsUntilTheProgressCodeOfTheLastCommandsTag) {
    scannerlink::state.nextTag = 10;
    deliverAt(50, makeReport(132, 2, 9, {1, 2, 3, 12}));
    deliverAt(350, makeReport(132, 2, 9, {1, 2, 3, 13}));
    EXPECT_EQ(type("cw 13"), kCaptureWaiting);
    EXPECT_EQ(fakePlatform().nowMs, 350u);
}

TEST_F(Settings, CaptureWaitTakesATagOffset) {
    scannerlink::state.nextTag = 10;
    deliver(makeReport(132, 2, 7, {1, 2, 3, 13}));
    type("cw 13 2");
    EXPECT_LE(fakePlatform().nowMs, 10u);
}

TEST_F(Settings, CaptureWaitIsAbandonedByAKeyAndEscLeavesAllScripts) {
    strikeAt(100, "x");
    type("cw 13");
    EXPECT_TRUE(inScript());
    fakePlatform().keys = "\x1B";
    type("Capture_Wait 13");
    EXPECT_FALSE(inScript());
}

TEST_F(Settings, CaptureWaitNeedsACode) {
    EXPECT_EQ(type("cw").substr(0, 61), "TamTest: Missing parameter - syntax for Capture_Wait(cw) is:\n");
}

TEST_F(Settings, TagIsShownSetAndUsedByTheNextCommand) {
    EXPECT_EQ(type("t"), "NEXT TAG: 1\n");
    EXPECT_EQ(type("Tag 100"), "NEXT TAG: 100\n");
    type("nop");
    EXPECT_EQ(support::packetsPut().at(0), support::wordBytes({0, 100, 0}));
    EXPECT_EQ(type("tag"), "NEXT TAG: 101\n");
    EXPECT_EQ(type("t 0xffffffff"), "NEXT TAG: -1\n");
}

TEST_F(Settings, KeyboardPollingIsShownAndSwitched) {
    EXPECT_EQ(type("kbhe"), "KbhitEnabled: 1\n");
    EXPECT_EQ(type("KBHit_Enable 0"), "KbhitEnabled: 0\n");
    EXPECT_EQ(type("kbhe 5"), "KbhitEnabled: 5\n");
    fakePlatform().keys = "x";
    type("w");
    EXPECT_EQ(fakePlatform().keysRead, 1);
}

TEST_F(Settings, FileVersionShowsTesterAndLibrary) {
    EXPECT_EQ(type("ver"), "TamTest version 1.2.3.4\nHOXI DLL version 7.8.9.10\n");
    EXPECT_EQ(fakeHoxi().calls.back().numbers, std::vector<uint64_t>{20});
}

TEST_F(Settings, VersionTextOfTheLibraryEndsWithTheBuffer) {
    fakeHoxi().version = std::string(30, '9');
    EXPECT_EQ(type("FileVersion"), "TamTest version 1.2.3.4\nHOXI DLL version " + std::string(19, '9') + "\n");
}

TEST_F(Settings, VersionsThatCannotBeHadAreErrors) {
    fakePlatform().hasVersion = false;
    fakeHoxi().results["GetVersion"] = 1;
    EXPECT_EQ(type("ver"), "*** ERROR: getVersion\n*** ERROR: HOXI GetVersion\n");
    EXPECT_FALSE(errorFlagged());
}

TEST_F(Settings, VersionNeedsABufferOf19) {
    char text[20] = {};
    EXPECT_EQ(getVersion(text, 18), 9001u);
    EXPECT_EQ(getVersion(text, 19), 0u);
    EXPECT_STREQ(text, "1.2.3.4");
    fakePlatform().hasVersion = false;
    EXPECT_EQ(getVersion(text, 20), 9000u);
}

TEST_F(Settings, WidestVersionIsCutToTheBuffer) {
    fakePlatform().versionMost = 0xFFFFFFFF;
    fakePlatform().versionLeast = 0xFFFFFFFF;
    char text[20] = {};
    getVersion(text, sizeof text);
    EXPECT_STREQ(text, "65535.65535.65535.6");
}

}  // namespace
}  // namespace console
