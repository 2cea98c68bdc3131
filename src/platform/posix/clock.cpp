#include "platform/clock.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace platform {

namespace {

// A single wait is cut to this, so that no deadline overflows the clock's own unit.
constexpr uint64_t kLongestWaitMs = 3'600'000;

}  // namespace

uint64_t nowMs() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

void sleepMs(uint32_t ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

void waitUntilMs(std::condition_variable& condition, std::unique_lock<std::mutex>& lock, uint64_t deadlineMs) {
    const uint64_t now = nowMs();
    if (now >= deadlineMs) {
        return;
    }
    const auto end = std::chrono::milliseconds(std::min(deadlineMs, now + kLongestWaitMs));
    condition.wait_until(lock, std::chrono::steady_clock::time_point(end));
}

std::tm localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

}  // namespace platform
