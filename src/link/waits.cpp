#include "link/waits.h"

#include <optional>

#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "link/report.h"
#include "link/status_check.h"

namespace scannerlink {
namespace {

enum class Verdict { keepWaiting, succeeded, failed };

Verdict verdict(bool success) {
    return success ? Verdict::succeeded : Verdict::failed;
}

// The one loop of all waits; look says after each pass of the status check what to make of the slots.
template <typename Look>
int waitUntil(uint32_t timeoutMs, Look look) {
    uint64_t elapsedMs = 0;
    for (;;) {
        if (checkStatus() == 0)
            elapsedMs += kPassMs;
        const Verdict seen = look();
        if (seen != Verdict::keepWaiting)
            return seen == Verdict::succeeded ? 1 : 0;
        if (timeoutMs != 0 && elapsedMs > timeoutMs)
            return 0;
    }
}

// Waits for a report of the code that carries the tag; judge then decides.
template <typename Judge>
int waitForTag(uint32_t scanner, uint32_t code, uint32_t tag, uint32_t timeoutMs, Judge judge) {
    return waitUntil(timeoutMs, [&] {
        const std::optional<Report> report = heldReport(scanner, code);
        return report && report->tag == tag ? judge(*report) : Verdict::keepWaiting;
    });
}

}  // namespace

int waitForStatusOf(uint32_t scanner, uint32_t code, int32_t reportState, uint32_t tag, uint32_t timeoutMs) {
    return waitForTag(scanner, code, tag, timeoutMs,
                      [=](const Report& report) { return verdict(report.state == reportState); });
}

int waitForStatus(uint32_t code, int32_t reportState, uint32_t tag, uint32_t timeoutMs) {
    return waitForStatusOf(state.currentScanner, code, reportState, tag, timeoutMs);
}

int waitForCommandCompleteOf(uint32_t scanner, uint32_t tag, uint32_t timeoutMs) {
    return waitForTag(scanner, hoxi::STA_COMMAND, tag, timeoutMs, [](const Report& report) {
        const bool underWay = report.state == hoxi::kPending || report.state == hoxi::kInProgress;
        return underWay ? Verdict::keepWaiting : verdict(report.state == hoxi::kComplete);
    });
}

int waitForCommandComplete(uint32_t tag, uint32_t timeoutMs) {
    return waitForCommandCompleteOf(state.currentScanner, tag, timeoutMs);
}

int waitForConfirmationOf(uint32_t scanner, uint32_t code, uint32_t value, uint32_t tag, uint32_t timeoutMs) {
    return waitForTag(scanner, code, tag, timeoutMs, [=](const Report& report) {
        return verdict(reportField<uint32_t>(report, kConfirmationOffset) == value);
    });
}

int waitForConfirmation(uint32_t code, uint32_t value, uint32_t tag, uint32_t timeoutMs) {
    return waitForConfirmationOf(state.currentScanner, code, value, tag, timeoutMs);
}

int waitForCaptureProgressOf(uint32_t scanner, uint32_t progress, uint32_t tag, uint32_t timeoutMs) {
    return waitForTag(scanner, hoxi::STA_CAPTURE_PROGRESS, tag, timeoutMs, [=](const Report& report) {
        return verdict(reportField<uint32_t>(report, kProgressOffset) == progress);
    });
}

int waitForCaptureProgress(uint32_t progress, uint32_t tag, uint32_t timeoutMs) {
    return waitForCaptureProgressOf(state.currentScanner, progress, tag, timeoutMs);
}

int waitForReset(uint32_t timeoutMs) {
    return waitUntil(timeoutMs, [] {
        for (uint32_t scanner = 0; scanner < state.scannerCount; ++scanner)
            if (!heldReport(scanner, hoxi::STA_RESET))
                return Verdict::keepWaiting;
        return Verdict::succeeded;
    });
}

}  // namespace scannerlink
