#include "support/fake_platform.h"

#include <memory>

#include "platform/clock.h"
#include "platform/console_input.h"
#include "platform/keyboard.h"
#include "platform/process.h"
#include "platform/program_version.h"
#include "platform/sync.h"

namespace support {
namespace {

FakePlatform fake;

// Monday, 16 November 2026, 05:08:38.
std::tm someDate() {
    std::tm date{};
    date.tm_year = 2026 - 1900;
    date.tm_mon = 10;
    date.tm_mday = 16;
    date.tm_hour = 5;
    date.tm_min = 8;
    date.tm_sec = 38;
    date.tm_wday = 1;
    return date;
}

void runDueEvents() {
    while (!fake.at.empty() && fake.at.begin()->first <= fake.nowMs) {
        const auto due = fake.at.begin()->second;
        fake.at.erase(fake.at.begin());
        due();
    }
}

}  // namespace

FakePlatform& fakePlatform() {
    return fake;
}

void resetFakePlatform() {
    fake = FakePlatform{};
    fake.date = someDate();
}

}  // namespace support

namespace platform {

using support::fake;

uint64_t nowMs() {
    return fake.nowMs;
}

void sleepMs(uint32_t ms) {
    fake.sleeps.push_back(ms);
    fake.nowMs += ms;
    if (fake.nowMs > fake.sleepLimitMs)
        throw support::SleptTooLong();
    support::runDueEvents();
    if (fake.onSleep)
        fake.onSleep();
}

std::tm localTime() {
    return fake.date;
}

bool keyWaiting() {
    return !fake.keys.empty();
}

int readKey() {
    const int key = static_cast<unsigned char>(fake.keys.at(0));
    fake.keys.erase(0, 1);
    ++fake.keysRead;
    return key;
}

void openConsoleInput(const char*, std::span<const char* const>) {}

void closeConsoleInput() {}

void setInputPrompt(const char* prompt) {
    fake.prompts.push_back(prompt);
}

void flushOutput() {
    std::fflush(stdout);
}

int outputColumns() {
    return fake.outputColumns;
}

bool inputReady() {
    return fake.inputIsTerminal ? !fake.keys.empty() || !fake.input.empty() : true;
}

int readInputByte() {
    if (fake.input.empty())
        return fake.inputIsTerminal ? kInputEmpty : kInputEnd;
    const int byte = static_cast<unsigned char>(fake.input[0]);
    fake.input.erase(0, 1);
    return byte;
}

bool programVersion(ProgramVersion& version) {
    version = {fake.versionMost, fake.versionLeast};
    return fake.hasVersion;
}

// One thread runs at a time, so a handle is all that a lock needs.
bool createMutex(Mutex& mutex) {
    if (fake.mutexRefused)
        return false;
    mutex.handle = &fake;
    return true;
}

bool lockMutex(Mutex& mutex) {
    if (fake.locksBeforeFailure == 0)
        return false;
    if (fake.locksBeforeFailure > 0)
        --fake.locksBeforeFailure;
    return mutex.handle != nullptr;
}

void unlockMutex(Mutex&) {}

bool createEvent(Event& event) {
    if (fake.eventsRefused)
        return false;
    static bool signals[64];
    static int next = 0;
    next = (next + 1) % 64;
    signals[next] = false;
    event.handle = &signals[next];
    return true;
}

void signalEvent(Event& event) {
    if (event.handle != nullptr)
        *static_cast<bool*>(event.handle) = true;
}

void resetEvent(Event& event) {
    if (event.handle != nullptr)
        *static_cast<bool*>(event.handle) = false;
}

bool waitEvent(Event& event, uint32_t) {
    if (event.handle == nullptr)
        return false;
    const bool signalled = *static_cast<bool*>(event.handle);
    resetEvent(event);
    return signalled;
}

bool startThread(void (*run)(void*), void* argument) {
    if (fake.threadsBeforeRefusal == 0)
        return false;
    if (fake.threadsBeforeRefusal > 0)
        --fake.threadsBeforeRefusal;
    fake.threads.push_back({run, argument});
    return true;
}

}  // namespace platform
