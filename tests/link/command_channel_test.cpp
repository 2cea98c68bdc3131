#include "link/command_channel.h"

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::fakeHoxi;
using support::HoxiCall;
using support::wordBytes;

class CommandChannel : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink(2);
    }
};

TEST_F(CommandChannel, SendHandsThePacketToTheCurrentScannerAndEchoesIt) {
    state.currentScanner = 1;
    const uint32_t packet[] = {12, 5, 12, 1, 2, 3};
    int sent = 0;
    EXPECT_EQ(printed([&] { sent = sendCommand(packet, sizeof packet); }),
              "scanner 1 command: code=12, tag=5, size=12 - hoxirtn=0\n");
    EXPECT_EQ(sent, 1);
    EXPECT_EQ(fakeHoxi().calls, (std::vector<HoxiCall>{{"PutCommand", {1, 24}, wordBytes({12, 5, 12, 1, 2, 3})}}));
    EXPECT_FALSE(console::errorFlagged());
}

TEST_F(CommandChannel, SendToAScannerLeavesTheCurrentOneAlone) {
    const uint32_t packet[] = {0, 1, 0};
    printed([&] { sendCommandToScanner(1, packet, sizeof packet); });
    EXPECT_EQ(fakeHoxi().calls.at(0).numbers, (std::vector<uint64_t>{1, 12}));
    EXPECT_EQ(state.currentScanner, 0u);
}

TEST_F(CommandChannel, RefusedPacketIsReportedAndFlagged) {
    fakeHoxi().results["PutCommand"] = 0xFFFFFFFE;
    const uint32_t packet[] = {0, 1, 0};
    int sent = -1;
    EXPECT_EQ(printed([&] { sent = sendCommand(packet, sizeof packet); }), "TamTest: Failure in HoxiPutCommand - -2\n");
    EXPECT_EQ(sent, 0);
    EXPECT_EQ(console::state.errorFlag, 0xFFFFFFFE);
}

TEST_F(CommandChannel, QuietSendPrintsNothing) {
    state.quiet = 1;
    const uint32_t packet[] = {0, 1, 0};
    EXPECT_EQ(printed([&] { sendCommand(packet, sizeof packet); }), "");
}

TEST_F(CommandChannel, FailedSendIsReportedEvenWhenQuiet) {
    state.quiet = 1;
    fakeHoxi().results["PutCommand"] = 9001;
    const uint32_t packet[] = {0, 1, 0};
    EXPECT_EQ(printed([&] { sendCommand(packet, sizeof packet); }), "TamTest: Failure in HoxiPutCommand - 9001\n");
}

TEST_F(CommandChannel, FirstCommandCarriesTagOneAndTheNextTagTwoWhateverTheScanner) {
    type("nop");
    type("scnr 1");
    type("nop");
    EXPECT_EQ(fakeHoxi().calls, (std::vector<HoxiCall>{{"PutCommand", {0, 12}, wordBytes({0, 1, 0})},
                                                       {"PutCommand", {1, 12}, wordBytes({0, 2, 0})}}));
}

struct TimeoutsCase {
    const char* line;
    std::vector<uint64_t> values;
};

class Timeouts : public CommandChannel, public ::testing::WithParamInterface<TimeoutsCase> {};

TEST_P(Timeouts, AreHandedToTheLibrary) {
    EXPECT_EQ(type(GetParam().line), "");
    EXPECT_EQ(fakeHoxi().calls, (std::vector<HoxiCall>{{"SetTimeouts", GetParam().values}}));
}

INSTANTIATE_TEST_SUITE_P(Lines, Timeouts,
                         ::testing::Values(TimeoutsCase{"sst", {1000, 1000}},
                                           TimeoutsCase{"sst 0xffffffff", {0xFFFFFFFF, 1000}},
                                           TimeoutsCase{"sst 5 010", {5, 8}}, TimeoutsCase{"sst 5 6 7 8", {5, 6}},
                                           TimeoutsCase{"sst x", {0, 1000}}));

TEST_F(CommandChannel, FailedTimeoutsShowTheResultAndFlagIt) {
    fakeHoxi().results["SetTimeouts"] = 9002;
    EXPECT_EQ(type("sst"), "TamTest: HoxiSetTimeouts returned 9002\n");
    EXPECT_EQ(console::state.errorFlag, 9002u);
}

struct BreakCase {
    const char* line;
    uint64_t enable;
};

class Break : public CommandChannel, public ::testing::WithParamInterface<BreakCase> {};

TEST_P(Break, IsSwitchedSilently) {
    fakeHoxi().results["BreakEnable"] = 1;
    EXPECT_EQ(type(GetParam().line), "");
    EXPECT_EQ(fakeHoxi().calls, (std::vector<HoxiCall>{{"BreakEnable", {GetParam().enable}}}));
    EXPECT_FALSE(console::errorFlagged());
}

INSTANTIATE_TEST_SUITE_P(Lines, Break,
                         ::testing::Values(BreakCase{"esb", 0}, BreakCase{"esb 5", 1}, BreakCase{"esb 0", 0},
                                           BreakCase{"esb 1 x", 1}));

TEST_F(CommandChannel, BusResetIsSilent) {
    EXPECT_EQ(type("brst"), "");
    EXPECT_EQ(fakeHoxi().calls, (std::vector<HoxiCall>{{"BusReset", {}}}));
}

TEST_F(CommandChannel, FailedBusResetIsReportedAndFlagged) {
    fakeHoxi().results["BusReset"] = 9003;
    EXPECT_EQ(type("BusReSeT"), "TamTest: failure in HoxiBusReset\n");
    EXPECT_EQ(console::state.errorFlag, 9003u);
}

}  // namespace
}  // namespace scannerlink
