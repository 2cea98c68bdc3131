#include "link/status_check.h"

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_platform.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::fakePlatform;
using support::makeReport;
using support::setBytes;

class StatusCheck : public support::TesterTest {
protected:
    static std::string check(int* result = nullptr) {
        return printed([&] {
            const int shown = checkStatus();
            if (result != nullptr)
                *result = shown;
        });
    }
    static std::string headerOf(int scanner, int code, int tag) {
        return "Mon Nov 16 05:08:38 2026\n  scanner: " + std::to_string(scanner) + "  code: " + std::to_string(code) +
               "  state: 3  tag: " + std::to_string(tag) + "  size: 0\n";
    }
};

TEST_F(StatusCheck, SleepsTenMillisecondsWhenThereIsNoReport) {
    startLink();
    int result = -1;
    EXPECT_EQ(check(&result), "");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(fakePlatform().sleeps, std::vector<uint32_t>{10});
}

TEST_F(StatusCheck, SleepsTenMillisecondsWithoutAnyScanner) {
    startLink(0);
    check();
    EXPECT_EQ(fakePlatform().sleeps, std::vector<uint32_t>{10});
}

TEST_F(StatusCheck, ShowsAReportWithoutSleepingAndKeepsItInItsSlot) {
    startLink();
    deliver(makeReport(133, 3, 7));
    int result = -1;
    EXPECT_EQ(check(&result), headerOf(0, 133, 7));
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(fakePlatform().sleeps.empty());
    EXPECT_FALSE(state.mailboxes[0].newest);
    ASSERT_TRUE(heldReport(0, 133));
    EXPECT_EQ(heldReport(0, 133)->tag, 7u);
}

TEST_F(StatusCheck, HandlesOneReportOfEveryScannerInIndexOrder) {
    startLink(8);
    deliver(makeReport(1, 3, 70), 7);
    deliver(makeReport(1, 3, 20), 2);
    EXPECT_EQ(check(), headerOf(2, 1, 20) + headerOf(7, 1, 70));
}

TEST_F(StatusCheck, GivesTheResultOfTheLastReportShown) {
    startLink(2);
    deliver(makeReport(1, 3, 1), 0);
    deliver(makeReport(200, 3, 1), 1);
    int result = -1;
    check(&result);
    EXPECT_EQ(result, 0);
    deliver(makeReport(200, 3, 1), 0);
    deliver(makeReport(1, 3, 1), 1);
    check(&result);
    EXPECT_EQ(result, 1);
}

TEST_F(StatusCheck, TwoReportsOfACodeAreBothShownAndTheLaterIsHeld) {
    startLink();
    deliver(makeReport(133, 3, 1));
    EXPECT_EQ(check(), headerOf(0, 133, 1));
    deliver(makeReport(133, 3, 2));
    EXPECT_EQ(check(), headerOf(0, 133, 2));
    EXPECT_EQ(heldReport(0, 133)->tag, 2u);
}

TEST_F(StatusCheck, PrintsTheSameFetchErrorOnceInARow) {
    startLink(2);
    state.mailboxes[1].fetchResult = 9101;
    EXPECT_EQ(check(), "checkStatus found error 9101 for scanner 1\n");
    state.mailboxes[1].fetchResult = 9101;
    EXPECT_EQ(check(), "");
    EXPECT_EQ(state.mailboxes[1].fetchResult, 0u);
}

TEST_F(StatusCheck, PrintsAnotherFetchErrorAndThenTheFirstAgain) {
    startLink();
    for (const uint32_t error : {9004u, 9005u, 9004u}) {
        state.mailboxes[0].fetchResult = error;
        EXPECT_EQ(check(), "checkStatus found error " + std::to_string(error) + " for scanner 0\n");
    }
}

TEST_F(StatusCheck, PrintsTheSameFetchErrorAgainAfterAReport) {
    startLink();
    state.mailboxes[0].fetchResult = 9004;
    check();
    deliver(makeReport(1, 3, 1));
    check();
    state.mailboxes[0].fetchResult = 9004;
    EXPECT_EQ(check(), "checkStatus found error 9004 for scanner 0\n");
}

TEST_F(StatusCheck, NeverPrintsThatTheLibraryWasClosed) {
    startLink();
    state.mailboxes[0].fetchResult = 9107;
    EXPECT_EQ(check(), "");
    EXPECT_EQ(state.mailboxes[0].fetchResult, 0u);
}

TEST_F(StatusCheck, KeepsTheModelOfAVersionReportEvenWhenQuiet) {
    startLink();
    state.quiet = 1;
    support::setBytes(state.mailboxes[0].newest.emplace(makeReport(4, 3, 1)), 28, "MX1300");
    EXPECT_EQ(check(), "");
    EXPECT_STREQ(state.models[0].data(), "MX1300");
}

TEST_F(StatusCheck, KeepsTheModelOfEveryScanner) {
    startLink(2);
    for (const uint32_t scanner : {0u, 1u})
        support::setBytes(state.mailboxes[scanner].newest.emplace(makeReport(4, 3, 1)), 28,
                          scanner == 0 ? "MX1300" : "MXRB-2");
    check();
    EXPECT_STREQ(state.models[0].data(), "MX1300");
    EXPECT_STREQ(state.models[1].data(), "MXRB-2");
}

TEST_F(StatusCheck, ScannerIsServedWhileItsThreadRuns) {
    startLink(2);
    EXPECT_TRUE(isServed(0));
    EXPECT_TRUE(isServed(1));
    EXPECT_FALSE(isServed(2));
    state.mailboxes[1].threadRunning = 0;
    EXPECT_FALSE(isServed(1));
}

TEST_F(StatusCheck, AModelWithoutZeroEndsWithItsSixteenBytes) {
    startLink();
    Report report = makeReport(4, 3, 1);
    setBytes(report, 28, std::string(32, 'M'));
    deliver(report);
    check();
    EXPECT_EQ(std::string(state.models[0].data()), std::string(16, 'M'));
}

TEST_F(StatusCheck, AShorterModelReplacesALongerOneWhole) {
    startLink();
    for (const char* model : {"MX1300-LONG", "MX1"}) {
        Report report = makeReport(4, 3, 1);
        setBytes(report, 28, model);
        deliver(report);
        check();
    }
    EXPECT_STREQ(state.models[0].data(), "MX1");
}

TEST_F(StatusCheck, KeepsTheStateOfARegisterReadReportEvenWhenQuiet) {
    startLink();
    state.quiet = 1;
    deliver(makeReport(103, 42, 1));
    check();
    EXPECT_EQ(state.i2cState, 42);
}

TEST_F(StatusCheck, ACodeOf256OrMoreIsShownAndFiledNowhere) {
    startLink();
    deliver(makeReport(256, 3, 1));
    EXPECT_EQ(check(), headerOf(0, 256, 1));
    EXPECT_FALSE(heldReport(0, 256));
}

TEST_F(StatusCheck, HoldsNothingForScannersBeyondTheTables) {
    startLink(8);
    EXPECT_FALSE(heldReport(8, 1));
}

TEST_F(StatusCheck, CodesWithoutSlotAreNotLookedForInTheNextMailbox) {
    startLink(2);
    for (uint32_t code = 0; code < kReportCodes; ++code)
        state.mailboxes[1].slots[code] = makeReport(code, 3, 1);
    state.mailboxes[1].newest = makeReport(1, 3, 1);
    for (uint32_t code = kReportCodes; code < 2 * kReportCodes; ++code)
        EXPECT_FALSE(heldReport(0, code)) << code;
}

TEST_F(StatusCheck, TextMessagesStayOutOfTheLogAndTheirPerCentSignsAreText) {
    startLink();
    const support::TemporaryFolder folder;
    type("blog " + folder.file("log"));
    Report message = makeReport(200, 3, 1);
    setBytes(message, 20, "50%n of %s, 100%%");
    deliver(message);
    EXPECT_EQ(check(), "\n  50%n of %s, 100%\n  ");
    EXPECT_EQ(support::readText(folder.file("log")), "");
    type("elog");
}

TEST_F(StatusCheck, ReportsReachTheLog) {
    startLink();
    const support::TemporaryFolder folder;
    type("blog " + folder.file("log"));
    deliver(makeReport(1, 3, 5));
    const std::string shown = check();
    EXPECT_EQ(shown, headerOf(0, 1, 5));
    EXPECT_EQ(support::readText(folder.file("log")), shown);
    type("elog");
}

TEST_F(StatusCheck, DiscardEmptiesThatSlotOfTheCurrentScannerOnly) {
    startLink(2);
    for (const uint32_t scanner : {0u, 1u})
        for (const uint32_t code : {26u, 27u})
            deliver(makeReport(code, 3, 1), scanner);
    state.currentScanner = 1;
    discardReport(26);
    EXPECT_TRUE(heldReport(0, 26));
    EXPECT_FALSE(heldReport(1, 26));
    EXPECT_TRUE(heldReport(1, 27));
}

TEST_F(StatusCheck, ShowsNothingWhileTheLockCannotBeHad) {
    startLink();
    deliver(makeReport(1, 3, 1));
    fakePlatform().locksBeforeFailure = 0;
    EXPECT_EQ(check(), "");
    fakePlatform().locksBeforeFailure = -1;
    EXPECT_EQ(check(), headerOf(0, 1, 1));
}

}  // namespace
}  // namespace scannerlink
