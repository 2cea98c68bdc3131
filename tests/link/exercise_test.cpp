#include "link/exercise.h"

#include <cstring>

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::callNames;
using support::fakeHoxi;
using support::fakePlatform;
using support::makeReport;
using support::packetsPut;
using support::wordBytes;

const char kFound[] = "TamTest: HoxiInitialize found 2 scanners\n";

// Two scanners that answer every NOP and every reset unless the test says otherwise. Nothing is echoed or shown.
class Exercise : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink(2);
        state.quiet = 1;
        fakeHoxi().onPutCommand = [this](uint32_t scanner, const std::vector<uint8_t>& packet) {
            uint32_t words[2];
            std::memcpy(words, packet.data(), sizeof words);
            ++puts;
            if (words[0] == 0 && answerNops)
                deliver(makeReport(1, 3, words[1]), scanner);
            if (words[0] == 1 && answerResets)
                deliver(makeReport(133, 1, words[1]), scanner);
            return puts == refusedPut ? 9020u : 0u;
        };
        fakeHoxi().onInitialize = [this] {
            for (uint32_t scanner = 0; scanner < 2; ++scanner)
                if (comeBack)
                    deliverAt(fakePlatform().nowMs + 10, makeReport(2, 3, 0), scanner);
            for (Mailbox& mailbox : state.mailboxes)
                mailbox.threadRunning = 0;
        };
    }

    bool answerNops = true;
    bool answerResets = true;
    bool comeBack = true;
    int puts = 0;
    int refusedPut = 0;
};

TEST_F(Exercise, NopSendsTwelveBytesAndAwaitsNothing) {
    state.quiet = 0;
    answerNops = false;
    EXPECT_EQ(type("nop"), "scanner 0 command: code=0, tag=1, size=0 - hoxirtn=0\n");
    EXPECT_EQ(packetsPut(), (std::vector<std::vector<uint8_t>>{wordBytes({0, 1, 0})}));
    EXPECT_TRUE(fakePlatform().sleeps.empty());
}

TEST_F(Exercise, NopLoopGoesOnUntilAKey) {
    fakeHoxi().onPutCommand = [this](uint32_t scanner, const std::vector<uint8_t>&) {
        deliver(makeReport(1, 3, state.nextTag - 1), scanner);
        if (++puts == 5)
            fakePlatform().keys = "xy";
        return 0u;
    };
    EXPECT_EQ(type("nopl"), "");
    EXPECT_EQ(puts, 5);
    EXPECT_EQ(fakePlatform().keys, "y");
}

TEST_F(Exercise, NopLoopSaysAfterTenSecondsThatNothingCameAndStops) {
    answerNops = false;
    EXPECT_EQ(type("NOPLoop"), "TamTest: nopl timed out waiting for status\n");
    EXPECT_EQ(fakePlatform().nowMs, 10010u);
    EXPECT_EQ(puts, 1);
}

TEST_F(Exercise, NopLoopStopsAtARefusedSend) {
    refusedPut = 3;
    EXPECT_EQ(type("nopl"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(puts, 3);
}

TEST_F(Exercise, NopLoopStopsAtAFlaggedError) {
    fakeHoxi().onPutCommand = [this](uint32_t scanner, const std::vector<uint8_t>&) {
        deliver(makeReport(1, 3, state.nextTag - 1), scanner);
        if (++puts == 4)
            console::flagError(9004);
        return 0u;
    };
    type("nopl");
    EXPECT_EQ(puts, 4);
}

TEST_F(Exercise, NopLoopWithoutKeyboardRunsUntilAnError) {
    fakePlatform().keys = "x";
    console::state.keyboardEnabled = 0;
    refusedPut = 50;
    type("nopl");
    EXPECT_EQ(puts, 50);
    EXPECT_EQ(fakePlatform().keys, "x");
}

TEST_F(Exercise, ResetSendsToEveryScannerPausesAndRestartsTheLibrary) {
    EXPECT_EQ(type("rst"), kFound);
    EXPECT_EQ(packetsPut(), (std::vector<std::vector<uint8_t>>{wordBytes({1, 1, 0}), wordBytes({1, 2, 0})}));
    EXPECT_EQ(callNames(), (std::vector<std::string>{"PutCommand", "PutCommand", "Terminate", "Initialize",
                                                     "GetBufSize", "GetBufSize"}));
    EXPECT_EQ(fakePlatform().sleeps, std::vector<uint32_t>{30000});
    EXPECT_EQ(state.nextTag, 3u);
}

TEST_F(Exercise, ResetWithoutPendingResponseStillRestarts) {
    answerResets = false;
    EXPECT_EQ(type("ReSeT"), std::string("TamTest: didn't get pending response to reset cmd\n") + kFound);
    EXPECT_EQ(puts, 1);
    EXPECT_EQ(fakePlatform().nowMs, 110u + 30000u);
}

TEST_F(Exercise, ResetThatIsRefusedStillRestarts) {
    refusedPut = 1;
    EXPECT_EQ(type("rst"), std::string("TamTest: Failure in HoxiPutCommand - 9020\n") + kFound);
    EXPECT_EQ(puts, 1);
}

TEST_F(Exercise, ResetLoopEndsWithAKeyAfterAWholePass) {
    fakePlatform().at.emplace(30005, [] { fakePlatform().keys = "q"; });
    EXPECT_EQ(type("rstl"), std::string(kFound) + "TamTest: ending reset loop upon receipt of keystroke\n");
    EXPECT_EQ(packetsPut(), (std::vector<std::vector<uint8_t>>{wordBytes({0, 1, 0}), wordBytes({0, 2, 0}),
                                                               wordBytes({1, 3, 0}), wordBytes({1, 4, 0})}));
}

TEST_F(Exercise, ResetLoopRepeatsUntilAPassFails) {
    refusedPut = 9;
    EXPECT_EQ(type("ReSeTLoop"), std::string(kFound) + kFound + "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(puts, 9);
}

TEST_F(Exercise, ResetLoopSaysThatANopWasNotAnswered) {
    answerNops = false;
    EXPECT_EQ(type("rstl"), "TamTest: timed out waiting for nop status\n");
    EXPECT_EQ(fakePlatform().nowMs, 10010u);
    EXPECT_EQ(puts, 1);
}

TEST_F(Exercise, ResetLoopSaysThatAResetWasNotPending) {
    answerResets = false;
    EXPECT_EQ(type("rstl"), "TamTest: didn't get pending response to reset cmd\n");
    EXPECT_EQ(puts, 3);
    EXPECT_EQ(callNames().back(), "PutCommand");
}

TEST_F(Exercise, ResetLoopStopsBeforeTheRestartWhenAnErrorIsFlagged) {
    console::flagError(9004);
    EXPECT_EQ(type("rstl"), "");
    EXPECT_EQ(puts, 3);
    EXPECT_EQ(callNames().back(), "PutCommand");
}

TEST_F(Exercise, ResetLoopFailsSilentlyWhenTheRestartFails) {
    fakeHoxi().results["GetBufSize"] = 5;
    EXPECT_EQ(type("rstl"), std::string(kFound) + "TamTest: Failed HoxiGetBufSize () for scanner 0\n");
}

TEST_F(Exercise, ResetLoopSaysThatAScannerDidNotComeBack) {
    comeBack = false;
    EXPECT_EQ(type("rstl"), std::string(kFound) + "TamTest: one of the scanners didn't complete reset\n");
    EXPECT_EQ(fakePlatform().nowMs, 30000u + 11010u);
}

TEST_F(Exercise, ResetLoopSaysThatAnErrorEscaped) {
    fakePlatform().at.emplace(30005, [] { console::flagError(9004); });
    EXPECT_EQ(type("rstl"), std::string(kFound) + "TamTest: HOXI error escaped attention of reset functions\n");
}

TEST_F(Exercise, ResetLoopWithoutScannersRestartsAndGoesOn) {
    state.scannerCount = 0;
    fakeHoxi().scannerCount = 0;
    fakePlatform().at.emplace(30005, [] { fakePlatform().keys = "q"; });
    EXPECT_EQ(type("rstl"),
              "TamTest: HoxiInitialize found 0 scanners\n"
              "TamTest: ending reset loop upon receipt of keystroke\n");
}

}  // namespace
}  // namespace scannerlink
