#include "simulator/faults.h"

#include <algorithm>

namespace simulator {

namespace {

bool isCountReached(const Trigger& trigger, const Progress& progress) {
    return progress.commands >= static_cast<uint64_t>(trigger.afterCommands) &&
           progress.reports >= static_cast<uint64_t>(trigger.afterReports);
}

uint64_t startOf(const Trigger& trigger, const Progress& progress) {
    return progress.startMs + static_cast<uint64_t>(trigger.atMs);
}

bool isCounted(const Trigger& trigger) {
    return trigger.afterCommands > 0 || trigger.afterReports > 0;
}

bool isFor(int64_t wanted, int64_t command) {
    return wanted == kNotGiven || wanted == command;
}

}  // namespace

bool isReached(const Trigger& trigger, const Progress& progress) {
    return isCountReached(trigger, progress) && progress.nowMs >= startOf(trigger, progress);
}

uint64_t reachedAtMs(const Trigger& trigger, const Progress& progress) {
    return isCountReached(trigger, progress) ? startOf(trigger, progress) : kNever;
}

bool OccasionCounter::isHit(const Occurrence& occurrence) {
    const uint64_t occasion = ++seen_;
    const auto first = static_cast<uint64_t>(occurrence.nth);
    const auto every = static_cast<uint64_t>(occurrence.every);
    if (occasion < first || (occasion - first) % every != 0) {
        return false;
    }
    return occurrence.count == 0 || (occasion - first) / every < static_cast<uint64_t>(occurrence.count);
}

HoxiResult CallFaults::resultOf(const LibraryCall& call, const Progress& progress) {
    HoxiResult result = 0;
    for (Entry& entry : entries_) {
        const bool counted = call.serial != 0 && entry.lastSerial == call.serial;
        if (counted || static_cast<Function>(entry.fault.function) != call.function ||
            !isFor(entry.fault.command, call.command) || !isReached(entry.fault, progress)) {
            continue;
        }
        entry.lastSerial = call.serial;
        if (entry.counter.isHit(entry.fault) && result == 0) {
            result = static_cast<HoxiResult>(entry.fault.result);
        }
    }
    return result;
}

uint64_t CallFaults::nextChangeMs(Function function, const Progress& progress) const {
    uint64_t next = kNever;
    for (const Entry& entry : entries_) {
        if (static_cast<Function>(entry.fault.function) == function && !isReached(entry.fault, progress)) {
            next = std::min(next, reachedAtMs(entry.fault, progress));
        }
    }
    return next;
}

std::vector<AnswerFault> AnswerFaults::meant(uint32_t command) {
    std::vector<AnswerFault> found;
    for (Entry& entry : entries_) {
        if (isFor(entry.fault.command, command) && entry.counter.isHit(entry.fault)) {
            found.push_back(entry.fault);
        }
    }
    return found;
}

std::optional<TransferFault> TransferFaults::meant(Function function) {
    std::optional<TransferFault> found;
    for (Entry& entry : entries_) {
        if (static_cast<Function>(entry.fault.function) == function && entry.counter.isHit(entry.fault) && !found) {
            found = entry.fault;
        }
    }
    return found;
}

uint64_t ReportSource::nextDueMs(const Progress& progress) {
    if (plan_.count != 0 && emitted_ >= static_cast<uint64_t>(plan_.count)) {
        return kNever;
    }
    if (!dueMs_) {
        if (!isCountReached(plan_, progress)) {
            return kNever;
        }
        // What commands or reports set off begins when they are noticed, everything else at its own time.
        const uint64_t start = startOf(plan_, progress);
        dueMs_ = isCounted(plan_) ? std::max(start, progress.nowMs) : start;
    }
    return *dueMs_;
}

Report ReportSource::take(uint64_t nowMs) {
    const uint32_t tag =
        static_cast<uint32_t>(plan_.tag) + static_cast<uint32_t>(emitted_) * static_cast<uint32_t>(plan_.tagStep);
    ReportWriter writer(static_cast<uint32_t>(plan_.code), static_cast<int32_t>(plan_.state), tag);
    for (const int64_t word : plan_.words) {
        writer.u32(static_cast<uint32_t>(word));
    }
    for (const int64_t byte : plan_.bytes) {
        writer.u8(static_cast<uint8_t>(byte));
    }
    if (!plan_.text.empty()) {
        writer.text(plan_.text, plan_.terminated);
    }
    writer.fillRest(static_cast<uint8_t>(plan_.fill));
    if (plan_.size != kNotGiven) {
        writer.statedSize(static_cast<uint32_t>(plan_.size));
    }
    ++emitted_;
    dueMs_ = plan_.periodMs > 0 ? *dueMs_ + static_cast<uint64_t>(plan_.periodMs) : nowMs;
    return writer.report();
}

}  // namespace simulator
