#include "platform/clock.h"

#include <windows.h>

#include <algorithm>
#include <chrono>

namespace platform {

namespace {

// A single wait is cut to this, so that no deadline overflows the clock's own unit.
constexpr uint64_t kLongestWaitMs = 3'600'000;

using Clock = std::chrono::steady_clock;

// The system's usual tick is nearly 16 ms long. Asked for once, the finer one lasts as long as the process.
void askForFineTicks() {
    [[maybe_unused]] static const MMRESULT asked = timeBeginPeriod(1);
}

}  // namespace

uint64_t nowMs() {
    const auto sinceStart = Clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

// The system counts ticks and may wake up within the last one, before the time is over.
void sleepMs(uint32_t ms) {
    askForFineTicks();
    const auto end = Clock::now() + std::chrono::milliseconds(ms);
    for (auto left = end - Clock::now(); left > Clock::duration::zero(); left = end - Clock::now()) {
        const auto wholeMs = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        Sleep(static_cast<DWORD>(std::min<int64_t>(wholeMs, kLongestWaitMs)));
    }
}

void waitUntilMs(std::condition_variable& condition, std::unique_lock<std::mutex>& lock, uint64_t deadlineMs) {
    const uint64_t now = nowMs();
    if (now >= deadlineMs) {
        return;
    }
    askForFineTicks();
    const auto end = std::chrono::milliseconds(std::min(deadlineMs, now + kLongestWaitMs));
    condition.wait_until(lock, Clock::time_point(end));
}

// From the system itself: the C library takes the zone from an environment variable TZ, whose usual values it does not
// understand, and is then off by hours.
std::tm localTime() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::tm local{};
    local.tm_year = now.wYear - 1900;
    local.tm_mon = now.wMonth - 1;
    local.tm_mday = now.wDay;
    local.tm_hour = now.wHour;
    local.tm_min = now.wMinute;
    local.tm_sec = now.wSecond;
    local.tm_wday = now.wDayOfWeek;
    return local;
}

}  // namespace platform
