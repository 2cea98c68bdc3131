#include "link/waits.h"

#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::fakePlatform;
using support::makeReport;

class Waits : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink(2);
        state.quiet = 1;
    }
};

TEST_F(Waits, StatusOfTheWantedStateGivesOne) {
    deliverAt(50, makeReport(1, 3, 9));
    EXPECT_EQ(waitForStatus(1, 3, 9, 1000), 1);
    EXPECT_EQ(fakePlatform().nowMs, 50u);
}

TEST_F(Waits, StatusOfAnotherStateGivesZeroAtOnce) {
    deliverAt(50, makeReport(1, 2, 9));
    EXPECT_EQ(waitForStatus(1, 3, 9, 1000), 0);
    EXPECT_EQ(fakePlatform().nowMs, 50u);
}

TEST_F(Waits, ReportsWithAnotherTagAreIgnored) {
    deliverAt(20, makeReport(1, 3, 8));
    deliverAt(60, makeReport(1, 3, 9));
    EXPECT_EQ(waitForStatus(1, 3, 9, 1000), 1);
    EXPECT_EQ(fakePlatform().nowMs, 60u);
}

TEST_F(Waits, AnOldReportInTheSlotMatchesAfterOnePass) {
    deliver(makeReport(1, 3, 9));
    state.mailboxes[0].newest.reset();
    EXPECT_EQ(waitForStatus(1, 3, 9, 1000), 1);
    EXPECT_EQ(fakePlatform().nowMs, 10u);
}

TEST_F(Waits, TimeOutEndsTheWaitWhenTheElapsedCountExceedsIt) {
    EXPECT_EQ(waitForStatus(1, 3, 9, 100), 0);
    EXPECT_EQ(fakePlatform().sleeps.size(), 11u);
}

TEST_F(Waits, AReportInTheLastPassStillCounts) {
    deliverAt(110, makeReport(1, 3, 9));
    EXPECT_EQ(waitForStatus(1, 3, 9, 100), 1);
}

TEST_F(Waits, AReportAfterTheLastPassComesTooLate) {
    deliverAt(120, makeReport(1, 3, 9));
    EXPECT_EQ(waitForStatus(1, 3, 9, 100), 0);
}

TEST_F(Waits, PassesThatShowedAReportDoNotCount) {
    for (int i = 1; i <= 5; ++i)
        deliverAt(i * 10, makeReport(133, 2, 1));
    waitForStatus(1, 3, 9, 100);
    EXPECT_EQ(fakePlatform().sleeps.size(), 16u);
}

TEST_F(Waits, PassesThatShowedATextMessageCount) {
    state.quiet = 0;
    deliver(makeReport(200, 3, 1));
    printed([] { waitForStatus(1, 3, 9, 100); });
    EXPECT_EQ(fakePlatform().sleeps.size(), 10u);
}

TEST_F(Waits, WithoutTimeOutTheWaitNeverEndsByItself) {
    EXPECT_THROW(waitForStatus(1, 3, 9, 0), support::SleptTooLong);
}

TEST_F(Waits, StatusIsLookedForOnTheGivenScanner) {
    deliver(makeReport(1, 3, 9), 0);
    EXPECT_EQ(waitForStatusOf(1, 1, 3, 9, 100), 0);
    deliver(makeReport(1, 3, 9), 1);
    EXPECT_EQ(waitForStatusOf(1, 1, 3, 9, 100), 1);
}

TEST_F(Waits, StatusIsLookedForOnTheCurrentScanner) {
    deliver(makeReport(1, 3, 9), 1);
    state.currentScanner = 1;
    EXPECT_EQ(waitForStatus(1, 3, 9, 100), 1);
}

TEST_F(Waits, CommandCompleteGoesOnThroughPendingAndInProgress) {
    deliverAt(10, makeReport(133, 1, 9));
    deliverAt(20, makeReport(133, 2, 9));
    deliverAt(30, makeReport(133, 3, 9));
    EXPECT_EQ(waitForCommandComplete(9, 1000), 1);
    EXPECT_EQ(fakePlatform().nowMs, 30u);
}

TEST_F(Waits, CommandStatesBelowPendingAndAboveCompleteFail) {
    for (const int32_t failed : {0, -1, 4, 5}) {
        deliver(makeReport(133, failed, 9));
        EXPECT_EQ(waitForCommandComplete(9, 1000), 0) << failed;
    }
}

TEST_F(Waits, CommandCompleteTimesOutWhileInProgress) {
    deliver(makeReport(133, 2, 9));
    EXPECT_EQ(waitForCommandComplete(9, 100), 0);
}

TEST_F(Waits, CommandCompleteIsLookedForOnTheGivenScanner) {
    deliver(makeReport(133, 3, 9), 1);
    EXPECT_EQ(waitForCommandCompleteOf(0, 9, 100), 0);
    EXPECT_EQ(waitForCommandCompleteOf(1, 9, 100), 1);
}

TEST_F(Waits, ConfirmationComparesTheFirstBodyWord) {
    deliver(makeReport(27, 3, 9, {1}));
    EXPECT_EQ(waitForConfirmation(27, 1, 9, 100), 1);
    EXPECT_EQ(waitForConfirmation(27, 5, 9, 100), 0);
}

TEST_F(Waits, AnotherConfirmationValueGivesZeroAtOnce) {
    deliverAt(20, makeReport(27, 3, 9, {5}));
    EXPECT_EQ(waitForConfirmation(27, 1, 9, 1000), 0);
    EXPECT_EQ(fakePlatform().nowMs, 20u);
}

TEST_F(Waits, ConfirmationIsLookedForOnTheGivenScannerAndCode) {
    deliver(makeReport(26, 3, 9, {1}), 1);
    EXPECT_EQ(waitForConfirmationOf(0, 26, 1, 9, 100), 0);
    EXPECT_EQ(waitForConfirmationOf(1, 27, 1, 9, 100), 0);
    EXPECT_EQ(waitForConfirmationOf(1, 26, 1, 9, 100), 1);
}

TEST_F(Waits, CaptureProgressComparesTheProgressCode) {
    deliver(makeReport(132, 3, 9, {1, 2, 3, 13}));
    EXPECT_EQ(waitForCaptureProgress(13, 9, 100), 1);
    EXPECT_EQ(waitForCaptureProgress(3, 9, 100), 0);
}

TEST_F(Waits, AnotherProgressCodeGivesZeroAtOnce) {
    deliverAt(20, makeReport(132, 3, 9, {1, 2, 3, 12}));
    EXPECT_EQ(waitForCaptureProgress(13, 9, 1000), 0);
    EXPECT_EQ(fakePlatform().nowMs, 20u);
}

TEST_F(Waits, CaptureProgressIsLookedForOnTheGivenScanner) {
    deliver(makeReport(132, 3, 9, {1, 2, 3, 13}), 1);
    EXPECT_EQ(waitForCaptureProgressOf(0, 13, 9, 100), 0);
    EXPECT_EQ(waitForCaptureProgressOf(1, 13, 9, 100), 1);
}

TEST_F(Waits, ResetWaitsForEveryScanner) {
    deliverAt(30, makeReport(2, 3, 0), 1);
    deliverAt(70, makeReport(2, 0, 99), 0);
    EXPECT_EQ(waitForReset(11000), 1);
    EXPECT_EQ(fakePlatform().nowMs, 70u);
}

TEST_F(Waits, ResetOfOneScannerOnlyTimesOut) {
    deliver(makeReport(2, 3, 0), 1);
    EXPECT_EQ(waitForReset(11000), 0);
}

TEST_F(Waits, ResetWithoutScannersIsOverAfterOnePass) {
    state.scannerCount = 0;
    EXPECT_EQ(waitForReset(11000), 1);
    EXPECT_EQ(fakePlatform().sleeps.size(), 1u);
}

}  // namespace
}  // namespace scannerlink
