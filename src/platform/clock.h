// Time as the program sees it. A test links another clock, so that a pause of 30 s lasts as long as the test says.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <ctime>
#include <mutex>

namespace platform {

// Milliseconds of a clock that only runs forward; its start is arbitrary. Any thread.
uint64_t nowMs();

// Sleeps at least ms milliseconds, with a resolution of about a millisecond. Any thread.
void sleepMs(uint32_t ms);

// Waits until the condition is notified or nowMs() has reached the deadline; may also return early, so callers
// look at their condition again. Any thread that holds the lock.
void waitUntilMs(std::condition_variable& condition, std::unique_lock<std::mutex>& lock, uint64_t deadlineMs);

// The current local date and time. Any thread.
std::tm localTime();

}  // namespace platform
