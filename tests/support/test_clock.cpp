#include "support/test_clock.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "platform/clock.h"

namespace support {
namespace {

std::atomic<double> clockSpeed{1};

std::chrono::nanoseconds worldTime(double programMs) {
    return std::chrono::nanoseconds(static_cast<int64_t>(programMs * 1e6 / clockSpeed));
}

}  // namespace

void setClockSpeed(double speed) {
    clockSpeed = speed;
}

}  // namespace support

namespace platform {

uint64_t nowMs() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration<double, std::milli>(sinceStart).count() * support::clockSpeed);
}

void sleepMs(uint32_t ms) {
    // Some systems take a very short sleep for none.
    const auto end = std::chrono::steady_clock::now() + support::worldTime(ms);
    do {
        std::this_thread::sleep_for(end - std::chrono::steady_clock::now());
    } while (std::chrono::steady_clock::now() < end);
}

void waitUntilMs(std::condition_variable& condition, std::unique_lock<std::mutex>& lock, uint64_t deadlineMs) {
    const uint64_t now = nowMs();
    const double longest = 3.6e6;  // an hour; callers look again anyway
    const double left = deadlineMs > now ? static_cast<double>(deadlineMs - now) : 0;
    condition.wait_for(lock, support::worldTime(std::min(left, longest)));
}

std::tm localTime() {
    const std::time_t now = std::time(nullptr);
    return *std::localtime(&now);
}

}  // namespace platform
