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

// How the mailbox stands when a status thread comes back to it.
enum class Place { full, empty, lost };

// Runs under newStatusMutex what act says, unless the thread has lost its mailbox: to a thread of after a restart, or
// because the wait for the lock failed, which is said.
template <typename Act>
Place visit(const Mailbox& mailbox, uint32_t generation, Act act) {
    if (!platform::lockMutex(state.newStatusMutex)) {
        console::output("Error waiting for newStatusMutex");
        return Place::lost;
    }
    const Place place = mailbox.generation == generation ? act() : Place::lost;
    platform::unlockMutex(state.newStatusMutex);
    return place;
}

Place look(const Mailbox& mailbox) {
    return mailbox.fetchResult == 0 && !mailbox.newest ? Place::empty : Place::full;
}

// A status thread's argument: its scanner and the generation of the mailbox that it serves, in one word.
void* threadArgument(uint32_t scanner, uint32_t generation) {
    return reinterpret_cast<void*>((static_cast<uintptr_t>(generation) << 8) | scanner);
}

void fetchStatus(void* argument) {
    const auto word = reinterpret_cast<uintptr_t>(argument);
    const auto scanner = static_cast<uint32_t>(word & 0xFF);
    const auto generation = static_cast<uint32_t>(word >> 8);
    Mailbox& mailbox = state.mailboxes[scanner];
    for (uint32_t pollMs = kFirstPollMs;;) {
        Report report{};
        uint32_t length = 0;
        const HoxiResult result = HoxiGetStatus(scanner, &report, sizeof report, &length);
        Place place = visit(mailbox, generation, [&] {
            handOver(mailbox, result, report);
            return endsThread(result) ? Place::lost : Place::full;
        });
        pollMs = nextPollInterval(pollMs, result);
        while (place == Place::full) {
            platform::sleepMs(pollMs);
            place = visit(mailbox, generation, [&] { return look(mailbox); });
        }
        if (place == Place::lost)
            return;
    }
}

// Whatever was fetched before a restart is gone, for scanners too that are not there any more.
void emptyMailbox(Mailbox& mailbox) {
    mailbox.newest.reset();
    mailbox.fetchResult = 0;
    mailbox.lastReportedError = 0;
    mailbox.slots.fill(std::nullopt);
    ++mailbox.generation;
}

void startFetch(uint32_t scanner) {
    Mailbox& mailbox = state.mailboxes[scanner];
    if (mailbox.threadRunning != 0)
        console::output("startStatusFetches found status thread %d running\n", static_cast<int>(scanner));
    mailbox.threadRunning = 1;
    if (!platform::startThread(fetchStatus, threadArgument(scanner, mailbox.generation))) {
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
    for (Mailbox& mailbox : state.mailboxes)
        emptyMailbox(mailbox);
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
