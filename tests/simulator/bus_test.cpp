// Opening, closing, resets and threads.
#include "simulator/bus.h"

#include <atomic>
#include <thread>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "platform/clock.h"
#include "simulator/results.h"
#include "simulator_test.h"

namespace simulator {
namespace {

using BusTest = SimulatorTest;

void waitForFetches(uint32_t count) {
    for (;;) {
        {
            const std::lock_guard lock(bus().mutex);
            if (bus().waiting == count) {
                return;
            }
        }
        std::this_thread::yield();
    }
}

TEST_F(BusTest, ResetIsPendingAndThenReported) {
    open();
    EXPECT_EQ(put(0, hoxi::CMD_RESET, 3), 0u);
    EXPECT_EQ(nextBriefs(2), "133:1:3 2:3:0");
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 5), 0u);
    EXPECT_EQ(next().brief(), "1:3:5");
}

TEST_F(BusTest, ScannerIsAwayDuringItsReset) {
    openText("library.scanners = 2\n[[scanner]]\noff_bus_ms = 3600000\nboot_ms = 3600000\n");
    uint64_t wide = 0;
    EXPECT_EQ(put(0, hoxi::CMD_RESET, 3), 0u);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 4), hoxi::kResultScannerGone);
    EXPECT_EQ(HoxiGetBufSize(0, &wide, &wide, &wide), hoxi::kResultScannerGone);
    EXPECT_EQ(put(1, hoxi::CMD_NOP, 5), 0u);
}

TEST_F(BusTest, ResetGivesUpTheCommandsUnderWay) {
    openText("[[scanner]]\nwork_ms = 3600000\n");
    put(0, hoxi::CMD_CONFIG_HAND_SPEED, 1);
    EXPECT_EQ(next().brief(), "133:1:1");
    put(0, hoxi::CMD_RESET, 2);
    EXPECT_EQ(nextBriefs(2), "133:1:2 2:3:0");
}

TEST_F(BusTest, ResetIsReportedAfterTheLibraryWasOpenedAgain) {
    open();
    put(0, hoxi::CMD_RESET, 1);
    EXPECT_EQ(next().brief(), "133:1:1");
    EXPECT_EQ(HoxiTerminate(), 0u);
    platform::sleepMs(30'000);
    EXPECT_EQ(open(), 1u);
    EXPECT_EQ(next().brief(), "2:3:0");
}

TEST_F(BusTest, WhatWasNotFetchedBeforeAResetIsLost) {
    open();
    put(0, hoxi::CMD_NOP, 1);
    put(0, hoxi::CMD_RESET, 2);
    HoxiTerminate();
    platform::sleepMs(30'000);
    open();
    EXPECT_EQ(next().brief(), "2:3:0");
}

TEST_F(BusTest, WithoutAResetUnfetchedReportsWaitForTheNextOpening) {
    open();
    put(0, hoxi::CMD_NOP, 1);
    HoxiTerminate();
    open();
    EXPECT_EQ(next().brief(), "1:3:1");
}

TEST_F(BusTest, ScannerThatIsStillAwayIsNotFound) {
    openText("library.scanners = 2\n[[scanner]]\noff_bus_ms = 3600000\nboot_ms = 3600000\n[[scanner]]\nserial = 'B'\n");
    put(0, hoxi::CMD_RESET, 1);
    HoxiTerminate();
    EXPECT_EQ(open(), 1u);
    put(0, hoxi::CMD_SEND_VERS, 2);
    next();
    EXPECT_EQ(next().text(44, 16), "B");
}

TEST_F(BusTest, CommandsToABootingScannerAreAnsweredAfterItsBoot) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 20000\n");
    put(0, hoxi::CMD_RESET, 1);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 2), 0u);
    EXPECT_EQ(nextBriefs(3), "133:1:1 2:3:0 1:3:2");
}

TEST_F(BusTest, ChangedScenarioMakesNewScanners) {
    EXPECT_EQ(openText("library.scanners = 3"), 3u);
    put(0, hoxi::CMD_NOP, 1);
    HoxiTerminate();
    EXPECT_EQ(openText("library.scanners = 5"), 5u);
    put(0, hoxi::CMD_NOP, 2);
    EXPECT_EQ(next().brief(), "1:3:2");
}

TEST_F(BusTest, ClosingEndsTheFetchesThatWait) {
    openText("library.scanners = 8");
    std::vector<std::thread> threads;
    std::vector<HoxiResult> results(8);
    for (uint32_t i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] { results[i] = failedFetch(i); });
    }
    waitForFetches(8);
    EXPECT_EQ(HoxiTerminate(), 0u);
    EXPECT_EQ(bus().waiting, 0u);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, std::vector<HoxiResult>(8, hoxi::kResultLibraryClosed));
}

TEST_F(BusTest, FetchFromBeforeARestartTakesNoReportFromAfterIt) {
    for (uint32_t round = 0; round < 50; ++round) {
        open();
        HoxiResult oldResult = 0;
        std::thread oldFetch([&] { oldResult = failedFetch(); });
        waitForFetches(1);
        HoxiTerminate();
        open();
        put(0, hoxi::CMD_NOP, round);
        EXPECT_EQ(next().tag, round);
        oldFetch.join();
        EXPECT_EQ(oldResult, hoxi::kResultLibraryClosed);
        HoxiTerminate();
    }
}

TEST_F(BusTest, FetchWakesForACommandThatComesLater) {
    open();
    SeenReport report;
    std::thread fetcher([&] { report = next(); });
    waitForFetches(1);
    put(0, hoxi::CMD_NOP, 77);
    fetcher.join();
    EXPECT_EQ(report.brief(), "1:3:77");
}

TEST_F(BusTest, FetchWakesWhenTheScannerIsUnplugged) {
    openText("[[unplug]]\nat_ms = 3000\n");
    EXPECT_EQ(failedFetch(), hoxi::kResultScannerGone);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 1), hoxi::kResultScannerGone);
    HoxiTerminate();
    EXPECT_EQ(open(), 0u);
}

TEST_F(BusTest, FloodOfEightScannersLosesNothing) {
    openFile("flood");
    std::vector<std::thread> threads;
    std::atomic<uint32_t> inOrder{0};
    for (uint32_t scanner = 0; scanner < 8; ++scanner) {
        threads.emplace_back([&, scanner] {
            uint32_t expected = 1;
            SeenReport report;
            while (expected <= 20'000 && fetch(scanner, report) == 0 && report.code == 132 && report.tag == expected) {
                ++expected;
            }
            inOrder += expected - 1;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(inOrder, 160'000u);
    put(3, hoxi::CMD_NOP, 5);
    EXPECT_EQ(next(3).brief(), "1:3:5");
}

TEST_F(BusTest, CommandsAreAnsweredDuringAFlood) {
    openText("[[report]]\ncode = 132\ncount = 0\n");
    for (uint32_t tag = 1; tag <= 3; ++tag) {
        next();
        put(0, hoxi::CMD_NOP, tag);
        SeenReport report = next();
        while (report.code == 132) {
            report = next();
        }
        EXPECT_EQ(report.brief(), "1:3:" + std::to_string(tag));
    }
}

TEST_F(BusTest, CallsFromManyThreadsLiveThroughRestarts) {
    open();
    std::atomic<bool> done{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            SeenReport report;
            uint64_t wide = 0;
            while (!done) {
                fetch(0, report);
                put(0, hoxi::CMD_NOP, 1);
                HoxiGetBufSize(0, &wide, &wide, &wide);
                HoxiStopVideo(0);
                HoxiSetTimeouts(1, 2);
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(HoxiTerminate(), 0u);
        open();
    }
    done = true;
    EXPECT_EQ(HoxiTerminate(), 0u);
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace simulator
