#include "link/status_check.h"

#include <algorithm>
#include <cinttypes>

#include "console/output.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "link/report_display.h"
#include "platform/clock.h"

namespace scannerlink {
namespace {

// Holds newStatusMutex while it lives, unless the wait for it failed.
class StatusLock {
public:
    StatusLock() : held(platform::lockMutex(state.newStatusMutex)) {}
    ~StatusLock() {
        if (held)
            platform::unlockMutex(state.newStatusMutex);
    }
    StatusLock(const StatusLock&) = delete;
    StatusLock& operator=(const StatusLock&) = delete;

    const bool held;
};

bool anyReportWaiting() {
    const StatusLock lock;
    const auto end = state.mailboxes.begin() + state.scannerCount;
    return lock.held && std::any_of(state.mailboxes.begin(), end, [](const Mailbox& box) { return box.newest; });
}

// What later operations ask for is kept also when nothing is shown.
void noteReport(uint32_t scanner, const Report& report) {
    if (report.code == hoxi::STA_VERSION) {
        state.models[scanner].fill('\0');
        const std::string model = reportText(report, kModelOffset, kModelSize);
        std::copy(model.begin(), model.end(), state.models[scanner].begin());
    }
    if (report.code == hoxi::STA_READ_I2C)
        state.i2cState = report.state;
}

void reportError(uint32_t scanner, Mailbox& mailbox) {
    if (mailbox.fetchResult != hoxi::kResultLibraryClosed && mailbox.fetchResult != mailbox.lastReportedError) {
        console::output("checkStatus found error %" PRId32 " for scanner %" PRId32 "\n",
                        static_cast<int32_t>(mailbox.fetchResult), static_cast<int32_t>(scanner));
        mailbox.lastReportedError = mailbox.fetchResult;
    }
    mailbox.fetchResult = 0;
    mailbox.newest.reset();
}

int showReport(uint32_t scanner, Mailbox& mailbox) {
    noteReport(scanner, *mailbox.newest);
    const int shown = displayReport(scanner, *mailbox.newest);
    mailbox.fetchResult = 0;
    mailbox.lastReportedError = 0;
    mailbox.newest.reset();
    return shown;
}

}  // namespace

int checkStatus() {
    if (!anyReportWaiting())
        platform::sleepMs(kPassMs);
    int shown = 0;
    for (uint32_t scanner = 0; scanner < state.scannerCount; ++scanner) {
        const StatusLock lock;
        if (!lock.held)
            continue;
        Mailbox& mailbox = state.mailboxes[scanner];
        if (mailbox.newest)
            shown = showReport(scanner, mailbox);
        else if (mailbox.fetchResult != 0)
            reportError(scanner, mailbox);
    }
    return shown;
}

bool isServed(uint32_t scanner) {
    const StatusLock lock;
    return lock.held && scanner < state.scannerCount && state.mailboxes[scanner].threadRunning != 0;
}

std::optional<Report> heldReport(uint32_t scanner, uint32_t code) {
    const StatusLock lock;
    if (!lock.held || scanner >= hoxi::kMaxScanners || code >= kReportCodes)
        return std::nullopt;
    return state.mailboxes[scanner].slots[code];
}

void discardReport(uint32_t code) {
    const StatusLock lock;
    if (lock.held && code < kReportCodes)
        state.mailboxes[state.currentScanner].slots[code].reset();
}

}  // namespace scannerlink
