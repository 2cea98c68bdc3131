#include "platform/sync.h"

#include <pthread.h>
#include <signal.h>

#include <cerrno>
#include <ctime>
#include <memory>

namespace platform {

namespace {

struct EventState {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t condition{};
    bool signalled = false;
};

struct ThreadStart {
    void (*run)(void*);
    void* argument;
};

bool initMonotonic(pthread_cond_t& condition) {
    pthread_condattr_t attributes;
    if (pthread_condattr_init(&attributes) != 0) {
        return false;
    }
    const bool made =
        pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC) == 0 && pthread_cond_init(&condition, &attributes) == 0;
    pthread_condattr_destroy(&attributes);
    return made;
}

timespec deadlineAfter(uint32_t timeoutMs) {
    constexpr long kSecondNs = 1'000'000'000;
    timespec deadline{};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += static_cast<time_t>(timeoutMs / 1000);
    deadline.tv_nsec += static_cast<long>(timeoutMs % 1000) * 1'000'000;
    if (deadline.tv_nsec >= kSecondNs) {
        deadline.tv_sec += 1;
        deadline.tv_nsec -= kSecondNs;
    }
    return deadline;
}

void setSignalled(const Event& event, bool signalled) {
    auto* state = static_cast<EventState*>(event.handle);
    if (state == nullptr || pthread_mutex_lock(&state->mutex) != 0) {
        return;
    }
    state->signalled = signalled;
    if (signalled) {
        pthread_cond_signal(&state->condition);
    }
    pthread_mutex_unlock(&state->mutex);
}

void waitSignalled(EventState& state, uint32_t timeoutMs) {
    const timespec deadline = deadlineAfter(timeoutMs);
    int result = 0;
    while (!state.signalled && result == 0) {
        result = timeoutMs == kForever ? pthread_cond_wait(&state.condition, &state.mutex)
                                       : pthread_cond_timedwait(&state.condition, &state.mutex, &deadline);
    }
}

void* runThread(void* argument) {
    const ThreadStart start = *std::unique_ptr<ThreadStart>(static_cast<ThreadStart*>(argument));
    start.run(start.argument);
    return nullptr;
}

}  // namespace

bool createMutex(Mutex& mutex) {
    auto created = std::make_unique<pthread_mutex_t>();
    if (pthread_mutex_init(created.get(), nullptr) != 0) {
        return false;
    }
    mutex.handle = created.release();
    return true;
}

bool lockMutex(Mutex& mutex) {
    return mutex.handle != nullptr && pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex.handle)) == 0;
}

void unlockMutex(Mutex& mutex) {
    if (mutex.handle != nullptr) {
        pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex.handle));
    }
}

bool createEvent(Event& event) {
    auto created = std::make_unique<EventState>();
    if (!initMonotonic(created->condition)) {
        return false;
    }
    event.handle = created.release();
    return true;
}

void signalEvent(Event& event) {
    setSignalled(event, true);
}

void resetEvent(Event& event) {
    setSignalled(event, false);
}

bool waitEvent(Event& event, uint32_t timeoutMs) {
    auto* state = static_cast<EventState*>(event.handle);
    if (state == nullptr || pthread_mutex_lock(&state->mutex) != 0) {
        return false;
    }
    waitSignalled(*state, timeoutMs);
    const bool passed = state->signalled;
    state->signalled = false;
    pthread_mutex_unlock(&state->mutex);
    return passed;
}

bool startThread(void (*run)(void*), void* argument) {
    auto start = std::make_unique<ThreadStart>(ThreadStart{run, argument});
    pthread_t thread{};
    // Signals are for the main thread, which alone knows the terminal that their handlers put back.
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    const int refused = pthread_create(&thread, nullptr, runThread, start.get());
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
    if (refused != 0) {
        return false;
    }
    start.release();
    pthread_detach(thread);
    return true;
}

}  // namespace platform
