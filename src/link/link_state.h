// All that the scanner link remembers, in one place. The mailboxes are shared with the status threads under
// newStatusMutex; all else belongs to the main thread. Nothing in here needs destroying, so that threads which are
// still on their way out when the process ends find it as it was.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "hoxi/hoxi_codes.h"
#include "link/report.h"
#include "platform/sync.h"

namespace scannerlink {

// What one status thread hands to the main thread, and what has been kept.
struct Mailbox {
    std::optional<Report> newest;    // fetched and not yet shown
    uint32_t fetchResult = 0;        // the last failed fetch not yet handled, 0 for none
    uint32_t lastReportedError = 0;  // so that each error is printed once
    int threadRunning = 0;
    uint32_t generation = 0;  // of the thread that serves it; one of before a restart finds another and ends
    std::array<std::optional<Report>, kReportCodes> slots;  // the latest report of each code
};

// The three sizes that the library tells of a scanner, in its order, bytes.
struct BufferSizes {
    uint64_t first = 0;
    uint64_t second = 0;
    uint64_t data = 0;  // the largest block of one data-channel call
};

struct LinkState {
    uint32_t scannerCount = 0;  // scanners served, at most kMaxScanners
    uint32_t currentScanner = 0;
    std::array<BufferSizes, hoxi::kMaxScanners> bufferSizes{};

    uint32_t nextTag = 1;
    int quiet = 0;  // 1: neither commands nor reports are shown

    platform::Mutex newStatusMutex;  // created once, kept for the life of the process
    std::array<Mailbox, hoxi::kMaxScanners> mailboxes{};

    // By scanner what it last said of itself, zero-terminated; empty until then.
    std::array<std::array<char, kModelSize + 1>, hoxi::kMaxScanners> models{};
    int32_t i2cState = 0;  // of the last report about a register read

    void (*startVideoThreads)() = nullptr;  // what else is started with the link
};

extern LinkState state;

// Puts everything but the mutex back to its start values. No status thread may be running.
void resetLinkState();

// Takes the tag of the next command and advances the counter.
inline uint32_t takeTag() {
    return state.nextTag++;
}

}  // namespace scannerlink
