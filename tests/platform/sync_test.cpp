#include "platform/sync.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>

#include "platform/clock.h"

namespace {

using namespace platform;

constexpr uint32_t kLongMs = 10'000;

// Handles live until the process ends; kept here they are nobody's leak.
std::array<Event, 1000> events;
std::array<Mutex, 1000> mutexes;
size_t eventCount = 0;
size_t mutexCount = 0;

Event& newEvent() {
    Event& event = events.at(eventCount++);
    EXPECT_TRUE(createEvent(event));
    return event;
}

Mutex& newMutex() {
    Mutex& mutex = mutexes.at(mutexCount++);
    EXPECT_TRUE(createMutex(mutex));
    return mutex;
}

TEST(Event, BeginsUnsignalled) {
    EXPECT_FALSE(waitEvent(newEvent(), 0));
}

TEST(Event, ASignalStaysUntilAWaitTakesIt) {
    Event& event = newEvent();
    signalEvent(event);
    EXPECT_TRUE(waitEvent(event, 0));
    EXPECT_FALSE(waitEvent(event, 0));
}

TEST(Event, TwoSignalsLetOneWaitPass) {
    Event& event = newEvent();
    signalEvent(event);
    signalEvent(event);
    EXPECT_TRUE(waitEvent(event, 0));
    EXPECT_FALSE(waitEvent(event, 0));
}

TEST(Event, ResetTakesTheSignalBack) {
    Event& event = newEvent();
    signalEvent(event);
    resetEvent(event);
    EXPECT_FALSE(waitEvent(event, 0));
}

TEST(Event, WaitGivesUpAfterItsTimeAndNotBefore) {
    Event& event = newEvent();
    const uint64_t start = nowMs();
    EXPECT_FALSE(waitEvent(event, 20));
    EXPECT_GE(nowMs() - start, 19u);
}

TEST(Event, ACopyOfTheHandleIsTheSameEvent) {
    Event& event = newEvent();
    Event copy = event;
    signalEvent(copy);
    EXPECT_TRUE(waitEvent(event, 0));
}

TEST(Event, WithoutAHandleNothingPasses) {
    Event none;
    signalEvent(none);
    resetEvent(none);
    EXPECT_FALSE(waitEvent(none, kForever));
}

TEST(Event, AThreadThatWaitsForeverIsLetPass) {
    struct Exchange {
        Event& ask;
        Event& answer;
    } exchange{newEvent(), newEvent()};
    ASSERT_TRUE(startThread(
        [](void* argument) {
            auto& state = *static_cast<Exchange*>(argument);
            if (waitEvent(state.ask, kForever)) {
                signalEvent(state.answer);
            }
        },
        &exchange));
    EXPECT_FALSE(waitEvent(exchange.answer, 10));
    signalEvent(exchange.ask);
    EXPECT_TRUE(waitEvent(exchange.answer, kLongMs));
}

TEST(Event, OneSignalLetsOneOfTwoThreadsPass) {
    struct Shared {
        Event& gate;
        Event& done;
        std::atomic<int> passed = 0;
    } shared{newEvent(), newEvent()};
    const auto run = [](void* argument) {
        auto& state = *static_cast<Shared*>(argument);
        if (waitEvent(state.gate, kForever)) {
            ++state.passed;
            signalEvent(state.done);
        }
    };
    ASSERT_TRUE(startThread(run, &shared));
    ASSERT_TRUE(startThread(run, &shared));
    signalEvent(shared.gate);
    ASSERT_TRUE(waitEvent(shared.done, kLongMs));
    EXPECT_FALSE(waitEvent(shared.done, 20));
    EXPECT_EQ(shared.passed, 1);
    signalEvent(shared.gate);
    EXPECT_TRUE(waitEvent(shared.done, kLongMs));
    EXPECT_EQ(shared.passed, 2);
}

TEST(Mutex, WithoutAHandleIsNotLocked) {
    Mutex none;
    EXPECT_FALSE(lockMutex(none));
    unlockMutex(none);
}

TEST(Mutex, LetsOneThreadInAtATime) {
    constexpr int kRounds = 20'000;
    struct Shared {
        Mutex& mutex;
        Event& done;
        int count = 0;
    } shared{newMutex(), newEvent()};
    const auto count = [](void* argument) {
        auto& state = *static_cast<Shared*>(argument);
        for (int i = 0; i < kRounds; ++i) {
            ASSERT_TRUE(lockMutex(state.mutex));
            ++state.count;
            unlockMutex(state.mutex);
        }
        signalEvent(state.done);
    };
    ASSERT_TRUE(startThread(count, &shared));
    for (int i = 0; i < kRounds; ++i) {
        ASSERT_TRUE(lockMutex(shared.mutex));
        ++shared.count;
        unlockMutex(shared.mutex);
    }
    ASSERT_TRUE(waitEvent(shared.done, kLongMs));
    EXPECT_EQ(shared.count, 2 * kRounds);
}

TEST(Thread, RunsWithItsArgument) {
    struct Shared {
        Event& done;
        int value = 0;
    } shared{newEvent()};
    ASSERT_TRUE(startThread(
        [](void* argument) {
            auto& state = *static_cast<Shared*>(argument);
            state.value = 5;
            signalEvent(state.done);
        },
        &shared));
    ASSERT_TRUE(waitEvent(shared.done, kLongMs));
    EXPECT_EQ(shared.value, 5);
}

}  // namespace
