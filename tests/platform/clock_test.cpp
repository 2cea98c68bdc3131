#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <thread>

namespace {

using platform::nowMs;

TEST(Clock, SleepLastsAtLeastAsLongAsAsked) {
    const uint64_t start = nowMs();
    platform::sleepMs(20);
    EXPECT_GE(nowMs() - start, 19u);  // both ends are cut to whole milliseconds
}

TEST(Clock, CountsMilliseconds) {
    const auto before = std::chrono::steady_clock::now();
    const uint64_t start = nowMs();
    platform::sleepMs(15);
    const uint64_t passed = nowMs() - start;
    const auto outer = std::chrono::steady_clock::now() - before;
    EXPECT_GE(passed, 14u);
    EXPECT_LE(passed, static_cast<uint64_t>(std::chrono::ceil<std::chrono::milliseconds>(outer).count()));
}

TEST(Clock, WaitEndsAtTheDeadline) {
    std::mutex mutex;
    std::condition_variable condition;
    std::unique_lock<std::mutex> lock(mutex);
    const uint64_t deadline = nowMs() + 200;
    int waits = 0;
    for (; nowMs() < deadline; ++waits) {
        platform::waitUntilMs(condition, lock, deadline);
    }
    EXPECT_TRUE(lock.owns_lock());
    EXPECT_LT(waits, 50) << "it does not wait";
}

TEST(Clock, WaitForADeadlineInThePastReturns) {
    std::mutex mutex;
    std::condition_variable condition;
    std::unique_lock<std::mutex> lock(mutex);
    platform::waitUntilMs(condition, lock, 0);
    platform::waitUntilMs(condition, lock, nowMs());
    EXPECT_TRUE(lock.owns_lock());
}

TEST(Clock, NotificationEndsAWaitWhoseDeadlineIsBeyondAllTime) {
    std::mutex mutex;
    std::condition_variable condition;
    bool told = false;
    std::unique_lock<std::mutex> lock(mutex);
    std::thread other([&] {
        const std::lock_guard<std::mutex> otherLock(mutex);
        told = true;
        condition.notify_one();
    });
    while (!told) {
        platform::waitUntilMs(condition, lock, std::numeric_limits<uint64_t>::max());
    }
    lock.unlock();
    other.join();
}

TEST(Clock, LocalTimeIsTheSystemsTime) {
    const std::time_t before = std::time(nullptr);
    std::tm local = platform::localTime();
    const std::time_t after = std::time(nullptr);
    const std::time_t told = std::mktime(&local);
    EXPECT_GE(told, before);
    EXPECT_LE(told, after);
}

}  // namespace
