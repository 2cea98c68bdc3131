// A platform for unit tests: a clock that runs only when somebody sleeps, keys and input as the test gives them,
// threads that the test runs when it likes, and refusals of every kind.
#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace support {

// Thrown by a sleep past FakePlatform::sleepLimitMs: what was to be tested would have waited for ever.
struct SleptTooLong : std::runtime_error {
    SleptTooLong() : std::runtime_error("slept past the limit") {}
};

struct FakeThread {
    void (*run)(void*);
    void* argument;
};

struct FakePlatform {
    uint64_t nowMs = 0;
    uint64_t sleepLimitMs = 1000000;
    std::vector<uint32_t> sleeps;                       // every sleep, milliseconds
    std::multimap<uint64_t, std::function<void()>> at;  // run when the clock reaches the time
    std::function<void()> onSleep;                      // run after every sleep
    std::tm date{};

    std::string keys;  // struck and not yet read
    int keysRead = 0;
    std::string input;  // what standard input still holds
    bool inputIsTerminal = false;
    std::vector<std::string> prompts;  // set for lines to be edited
    int outputColumns = 0;             // 0: standard output is no terminal

    bool hasVersion = true;
    uint32_t versionMost = 0x00010002;
    uint32_t versionLeast = 0x00030004;

    bool mutexRefused = false;
    int locksBeforeFailure = -1;  // -1: locking never fails
    bool eventsRefused = false;
    int threadsBeforeRefusal = -1;    // -1: threads are never refused
    std::vector<FakeThread> threads;  // started; nothing runs them but the test
};

FakePlatform& fakePlatform();
void resetFakePlatform();

}  // namespace support
