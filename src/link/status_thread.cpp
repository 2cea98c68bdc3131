#include "link/status_thread.h"

#include <cstdlib>

#include "console/console_state.h"
#include "console/output.h"
#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "platform/clock.h"

namespace scannerlink {
namespace {

constexpr uint32_t kFirstPollMs = 10;
constexpr uint32_t kSlowdown = 10;
constexpr uint32_t kSlowestPollMs = 0xFFFFFFFF;

bool endsThread(uint32_t result) {
    return result == hoxi::kResultLibraryClosed || result == hoxi::kResultScannerGone;
}

void handOver(Mailbox& mailbox, uint32_t result, const Report& report) {
    mailbox.fetchResult = result;
    mailbox.newest.reset();
    if (result == 0) {
        mailbox.newest = report;
        if (report.code < kReportCodes)
            mailbox.slots[report.code] = report;
    } else if (!endsThread(result)) {
        console::flagError(result);
    }
    if (endsThread(result))
        mailbox.threadRunning = 0;
}

bool handled(const Mailbox& mailbox) {
    if (!platform::lockMutex(state.newStatusMutex))
        return true;
    const bool empty = mailbox.fetchResult == 0 && !mailbox.newest;
    platform::unlockMutex(state.newStatusMutex);
    return empty;
}

void fetchStatus(void* argument) {
    auto& mailbox = *static_cast<Mailbox*>(argument);
    const auto scanner = static_cast<uint32_t>(&mailbox - state.mailboxes.data());
    uint32_t pollMs = kFirstPollMs;
    for (;;) {
        Report report{};
        uint32_t length = 0;
        const HoxiResult result = HoxiGetStatus(scanner, &report, sizeof report, &length);
        if (!platform::lockMutex(state.newStatusMutex)) {
            console::output("Error waiting for newStatusMutex");
            return;
        }
        handOver(mailbox, result, report);
        platform::unlockMutex(state.newStatusMutex);
        if (endsThread(result))
            return;
        pollMs = nextPollInterval(pollMs, result);
        do
            platform::sleepMs(pollMs);
        while (!handled(mailbox));
    }
}

void startFetch(uint32_t scanner) {
    Mailbox& mailbox = state.mailboxes[scanner];
    if (mailbox.threadRunning != 0)
        console::output("startStatusFetches found status thread %d running\n", static_cast<int>(scanner));
    mailbox = Mailbox{};
    mailbox.threadRunning = 1;
    if (!platform::startThread(fetchStatus, &mailbox)) {
        mailbox.threadRunning = 0;
        console::output("TamTest: failed to create status thread %d\n", static_cast<int>(scanner));
    }
}

}  // namespace

void startStatusFetches() {
    if (state.newStatusMutex.handle == nullptr && !platform::createMutex(state.newStatusMutex)) {
        console::output("Couldn't create newStatusMutex\n");
        std::exit(-1);
    }
    if (!platform::lockMutex(state.newStatusMutex))
        return;
    for (uint32_t scanner = 0; scanner < state.scannerCount; ++scanner)
        startFetch(scanner);
    platform::unlockMutex(state.newStatusMutex);
}

uint32_t nextPollInterval(uint32_t pollMs, uint32_t fetchResult) {
    if (fetchResult == 0)
        return kFirstPollMs;
    const bool slower = fetchResult == hoxi::kResultTimedOut || (pollMs >= 11 && pollMs <= 9999);
    if (!slower)
        return pollMs;
    return pollMs > kSlowestPollMs / kSlowdown ? kSlowestPollMs : pollMs * kSlowdown;
}

}  // namespace scannerlink
