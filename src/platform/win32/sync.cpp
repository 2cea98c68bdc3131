#include "platform/sync.h"

#include <process.h>
#include <windows.h>

#include <memory>

namespace platform {

namespace {

struct ThreadStart {
    void (*run)(void*);
    void* argument;
};

unsigned __stdcall runThread(void* argument) {
    const ThreadStart start = *std::unique_ptr<ThreadStart>(static_cast<ThreadStart*>(argument));
    start.run(start.argument);
    return 0;
}

bool keep(HANDLE created, void*& handle) {
    if (created == nullptr) {
        return false;
    }
    handle = created;
    return true;
}

}  // namespace

bool createMutex(Mutex& mutex) {
    return keep(CreateMutexW(nullptr, FALSE, nullptr), mutex.handle);
}

// A mutex whose holder's thread has ended without giving it back is held all the same.
bool lockMutex(Mutex& mutex) {
    if (mutex.handle == nullptr) {
        return false;
    }
    const DWORD result = WaitForSingleObject(mutex.handle, INFINITE);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

void unlockMutex(Mutex& mutex) {
    if (mutex.handle != nullptr) {
        ReleaseMutex(mutex.handle);
    }
}

bool createEvent(Event& event) {
    return keep(CreateEventW(nullptr, FALSE, FALSE, nullptr), event.handle);
}

void signalEvent(Event& event) {
    if (event.handle != nullptr) {
        SetEvent(event.handle);
    }
}

void resetEvent(Event& event) {
    if (event.handle != nullptr) {
        ResetEvent(event.handle);
    }
}

bool waitEvent(Event& event, uint32_t timeoutMs) {
    static_assert(kForever == INFINITE);
    return event.handle != nullptr && WaitForSingleObject(event.handle, timeoutMs) == WAIT_OBJECT_0;
}

bool startThread(void (*run)(void*), void* argument) {
    auto start = std::make_unique<ThreadStart>(ThreadStart{run, argument});
    const uintptr_t thread = _beginthreadex(nullptr, 0, runThread, start.get(), 0, nullptr);
    if (thread == 0) {
        return false;
    }
    start.release();
    CloseHandle(reinterpret_cast<HANDLE>(thread));
    return true;
}

}  // namespace platform
