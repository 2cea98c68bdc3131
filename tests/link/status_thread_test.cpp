#include "link/status_thread.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <span>

#include "console/console_state.h"
#include "link/link_state.h"
#include "link/scanner_link.h"
#include "link/status_check.h"
#include "support/child_process.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::fakeHoxi;
using support::fakePlatform;
using support::makeReport;

// The thread's function runs in the test; whenever it sleeps, the main thread's check has its turn.
class StatusThread : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
        fakeHoxi().onGetStatus = [this](uint32_t, Report& report) { return fetch(report); };
    }

    uint32_t fetch(Report& report) {
        if (results.empty())
            return 9107;
        const uint32_t result = results.front();
        results.pop_front();
        if (result == 0)
            report = makeReport(133, 3, ++reports);
        return result;
    }

    std::string runThread(size_t thread = 0) {
        return printed([&] {
            const support::FakeThread started = fakePlatform().threads.at(thread);
            started.run(started.argument);
        });
    }

    // What the check itself sleeps is not the thread's.
    void checkWheneverTheThreadSleeps() {
        fakePlatform().onSleep = [this] {
            if (checking)
                return;
            threadSleeps.push_back(fakePlatform().sleeps.back());
            checking = true;
            checkStatus();
            checking = false;
        };
    }

    bool checking = false;
    std::vector<uint32_t> threadSleeps;
    std::deque<uint32_t> results;
    uint32_t reports = 0;
};

TEST_F(StatusThread, HandsOverOneReportAtATime) {
    results = {0, 0, 0};
    std::vector<uint32_t> tags;
    fakePlatform().onSleep = [&] {
        tags.push_back(state.mailboxes[0].newest->tag);
        state.mailboxes[0].newest.reset();
    };
    runThread();
    EXPECT_EQ(tags, (std::vector<uint32_t>{1, 2, 3}));
}

TEST_F(StatusThread, DoesNotFetchAgainBeforeTheReportIsHandled) {
    results = {0, 0};
    int looks = 0;
    fakePlatform().onSleep = [&] {
        EXPECT_EQ(reports, looks < 5 ? 1u : 2u);
        if (++looks == 5 || looks == 6)
            state.mailboxes[0].newest.reset();
    };
    runThread();
    EXPECT_EQ(looks, 6);
}

TEST_F(StatusThread, ReportIsFiledUnderItsCode) {
    results = {0};
    checkWheneverTheThreadSleeps();
    state.quiet = 1;
    runThread();
    EXPECT_EQ(heldReport(0, 133)->tag, 1u);
    EXPECT_FALSE(heldReport(0, 132));
}

TEST_F(StatusThread, ReportOfACodeWithoutSlotIsHandedOverAndFiledNowhere) {
    const auto nextMailbox = [] { return std::as_bytes(std::span(&state.mailboxes[1], 1)); };
    const std::vector<std::byte> before(nextMailbox().begin(), nextMailbox().end());
    fakeHoxi().onGetStatus = [this](uint32_t, Report& report) {
        report = makeReport(256 + 1, 3, 1);
        return ++reports == 1 ? 0u : 9107u;
    };
    bool handedOver = false;
    fakePlatform().onSleep = [&] {
        handedOver = state.mailboxes[0].newest.has_value();
        state.mailboxes[0].newest.reset();
    };
    runThread();
    EXPECT_TRUE(handedOver);
    EXPECT_FALSE(heldReport(0, 133));
    EXPECT_TRUE(std::equal(before.begin(), before.end(), nextMailbox().begin()));
}

TEST_F(StatusThread, BlockIsZeroedBeforeEveryFetch) {
    fakeHoxi().onGetStatus = [this](uint32_t, Report& report) {
        EXPECT_EQ(report.body[0], 0);
        report.body[0] = 0xFF;
        return ++reports <= 2 ? 0u : 9107u;
    };
    state.quiet = 1;
    checkWheneverTheThreadSleeps();
    runThread();
    EXPECT_EQ(reports, 3u);
}

TEST_F(StatusThread, EndsWhenTheLibraryIsClosedWithoutFlaggingAnError) {
    runThread();
    EXPECT_EQ(state.mailboxes[0].threadRunning, 0);
    EXPECT_EQ(state.mailboxes[0].fetchResult, 9107u);
    EXPECT_FALSE(console::errorFlagged());
    EXPECT_TRUE(fakePlatform().sleeps.empty());
}

TEST_F(StatusThread, EndsWhenTheScannerIsGoneWithoutFlaggingAnError) {
    results = {9101};
    runThread();
    EXPECT_EQ(state.mailboxes[0].threadRunning, 0);
    EXPECT_FALSE(console::errorFlagged());
    EXPECT_EQ(printed([] { checkStatus(); }), "checkStatus found error 9101 for scanner 0\n");
}

TEST_F(StatusThread, OtherErrorsAreFlaggedAndTheThreadGoesOn) {
    results = {9005, 0};
    checkWheneverTheThreadSleeps();
    runThread();
    EXPECT_EQ(console::state.errorFlag, 9005u);
    EXPECT_EQ(reports, 1u);
}

TEST_F(StatusThread, SleepsTenMillisecondsAfterAReport) {
    results = {0, 0};
    state.quiet = 1;
    checkWheneverTheThreadSleeps();
    runThread();
    EXPECT_EQ(threadSleeps, (std::vector<uint32_t>{10, 10}));
}

TEST_F(StatusThread, SleepsLongerAndLongerThroughARunOfTimeouts) {
    results = {9004, 9004, 9004, 0, 9004};
    state.quiet = 1;
    checkWheneverTheThreadSleeps();
    runThread();
    EXPECT_EQ(threadSleeps, (std::vector<uint32_t>{100, 1000, 10000, 10, 100}));
}

TEST(PollInterval, IsTenAfterASuccess) {
    EXPECT_EQ(nextPollInterval(100000, 0), 10u);
}

TEST(PollInterval, GrowsTenfoldAfterATimeoutWithoutLimit) {
    EXPECT_EQ(nextPollInterval(10, 9004), 100u);
    EXPECT_EQ(nextPollInterval(10000, 9004), 100000u);
}

TEST(PollInterval, NeverWrapsAround) {
    EXPECT_EQ(nextPollInterval(429496729, 9004), 4294967290u);
    EXPECT_EQ(nextPollInterval(429496730, 9004), 0xFFFFFFFFu);
    EXPECT_EQ(nextPollInterval(0xFFFFFFFF, 9004), 0xFFFFFFFFu);
}

TEST(PollInterval, GrowsAfterOtherErrorsFrom11To9999Only) {
    EXPECT_EQ(nextPollInterval(10, 9005), 10u);
    EXPECT_EQ(nextPollInterval(11, 9005), 110u);
    EXPECT_EQ(nextPollInterval(9999, 9005), 99990u);
    EXPECT_EQ(nextPollInterval(10000, 9005), 10000u);
}

TEST_F(StatusThread, FailedLockEndsTheThreadWithAMessage) {
    results = {0};
    fakePlatform().locksBeforeFailure = 0;
    EXPECT_EQ(runThread(), "Error waiting for newStatusMutex");
    EXPECT_EQ(state.mailboxes[0].threadRunning, 1);
}

TEST_F(StatusThread, FailedLockBetweenTheLooksEndsTheThreadWithAMessage) {
    results = {0, 0};
    fakePlatform().locksBeforeFailure = 1;
    EXPECT_EQ(runThread(), "Error waiting for newStatusMutex");
    EXPECT_EQ(reports, 1u);
}

TEST_F(StatusThread, OfBeforeARestartEndsAndLeavesTheMailboxToTheNewOne) {
    results = {0, 0};
    fakePlatform().onSleep = [] {
        startStatusFetches();
        deliver(makeReport(1, 3, 99));
    };
    EXPECT_EQ(runThread(), "startStatusFetches found status thread 0 running\n");
    EXPECT_EQ(reports, 1u);
    EXPECT_EQ(state.mailboxes[0].newest->tag, 99u);
}

TEST_F(StatusThread, OfBeforeARestartHandsNothingOverAnyMore) {
    fakeHoxi().onGetStatus = [](uint32_t, Report& report) {
        printed(startStatusFetches);
        report = makeReport(133, 3, 1);
        return 0u;
    };
    const support::FakeThread old = fakePlatform().threads.at(0);
    old.run(old.argument);
    EXPECT_FALSE(state.mailboxes[0].newest);
    EXPECT_FALSE(heldReport(0, 133));
}

TEST_F(StatusThread, RestartEmptiesTheMailboxesOfScannersThatAreGone) {
    deliver(makeReport(133, 3, 1), 7);
    printed(startStatusFetches);
    EXPECT_FALSE(heldReport(7, 133));
}

TEST_F(StatusThread, RestartEmptiesTheMailboxes) {
    deliver(makeReport(133, 3, 1));
    state.mailboxes[0].fetchResult = 9101;
    state.mailboxes[0].threadRunning = 0;
    EXPECT_EQ(printed(startStatusFetches), "");
    EXPECT_FALSE(state.mailboxes[0].newest);
    EXPECT_EQ(state.mailboxes[0].fetchResult, 0u);
    EXPECT_FALSE(heldReport(0, 133));
    EXPECT_EQ(state.mailboxes[0].threadRunning, 1);
    EXPECT_EQ(fakePlatform().threads.size(), 2u);
}

TEST_F(StatusThread, RestartNamesAThreadThatStillRunsAndStartsAnother) {
    EXPECT_EQ(printed(startStatusFetches), "startStatusFetches found status thread 0 running\n");
    EXPECT_EQ(fakePlatform().threads.size(), 2u);
}

TEST_F(StatusThread, RefusedThreadIsReported) {
    state.mailboxes[0].threadRunning = 0;
    fakePlatform().threadsBeforeRefusal = 0;
    EXPECT_EQ(printed(startStatusFetches), "TamTest: failed to create status thread 0\n");
    EXPECT_EQ(state.mailboxes[0].threadRunning, 0);
}

TEST_F(StatusThread, RefusedMutexIsSaidAndEndsTheProcess) {
    state.newStatusMutex = {};
    fakePlatform().mutexRefused = true;
    EXPECT_EXIT(
        {
            ::testing::internal::CaptureStdout();
            std::atexit([] { std::fputs(::testing::internal::GetCapturedStdout().c_str(), stderr); });
            startStatusFetches();
        },
        ::testing::ExitedWithCode(support::exitCodeOf(-1)), "Couldn't create newStatusMutex\n");
}

}  // namespace
}  // namespace scannerlink
