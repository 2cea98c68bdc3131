// Threads, mutex and auto-reset events of the operating system. Creating one can fail, and the caller is told.
// Handles are plain words: they may be copied, and live until the process ends.
#pragma once

#include <cstdint>

namespace platform {

inline constexpr uint32_t kForever = 0xFFFFFFFF;

struct Mutex {
    void* handle = nullptr;
};

// False when the system refuses; the mutex is then as before.
bool createMutex(Mutex& mutex);
// Waits without limit. False when the wait failed; the mutex is then not held.
bool lockMutex(Mutex& mutex);
void unlockMutex(Mutex& mutex);

// An auto-reset event: a signal lets exactly one wait pass and stays until one does.
struct Event {
    void* handle = nullptr;
};

// Creates the event unsignalled. False when the system refuses; the event is then as before.
bool createEvent(Event& event);
void signalEvent(Event& event);
void resetEvent(Event& event);
// True when the event was signalled within timeoutMs milliseconds, false after that time or when the wait failed.
bool waitEvent(Event& event, uint32_t timeoutMs);

// Runs run(argument) on a thread of its own that nobody joins. False when the system has no thread to give.
bool startThread(void (*run)(void*), void* argument);

}  // namespace platform
