#include "simulator/scanner.h"

#include <algorithm>

namespace simulator {

namespace {

bool isFor(int64_t wanted, size_t index) {
    return wanted == kNotGiven || wanted == static_cast<int64_t>(index);
}

}  // namespace

Scanner::Scanner(const Scenario& scenario, size_t index, uint64_t startMs)
    : plan_(scannerPlan(scenario, index)), startMs_(startMs) {
    for (const Unplug& unplug : scenario.unplugs) {
        if (isFor(unplug.scanner, index)) {
            unplugs_.push_back(unplug);
        }
    }
    for (const CallFault& fault : scenario.callFaults) {
        if (hasScanner(static_cast<Function>(fault.function)) && isFor(fault.scanner, index)) {
            callFaults_.add(fault);
        }
    }
    for (const AnswerFault& fault : scenario.answerFaults) {
        if (isFor(fault.scanner, index)) {
            answerFaults_.add(fault);
        }
    }
    for (const UnaskedReport& report : scenario.reports) {
        if (isFor(report.scanner, index)) {
            sources_.emplace_back(report);
        }
    }
}

bool Scanner::isUnplugged(uint64_t nowMs) {
    const auto reached = [&](const Unplug& unplug) { return isReached(unplug, progress(nowMs)); };
    unplugged_ = unplugged_ || std::any_of(unplugs_.begin(), unplugs_.end(), reached);
    return unplugged_;
}

bool Scanner::isOnBus(uint64_t nowMs) {
    return !isUnplugged(nowMs) && nowMs >= offBusUntilMs_;
}

void Scanner::connect() {
    queue_.dropBefore(offBusUntilMs_);
}

HoxiResult Scanner::faultOf(const LibraryCall& call, uint64_t nowMs) {
    return callFaults_.resultOf(call, progress(nowMs));
}

void Scanner::execute(const CommandPacket& packet, uint64_t nowMs) {
    ++commands_;
    const Answer answer = runCommand(*this, packet, nowMs);
    queueAnswer(answer, packet.code, std::max(nowMs, idleMs_));
    idleMs_ = std::max(idleMs_, bootedMs_);
}

std::optional<Report> Scanner::takeReport(uint64_t nowMs) {
    uint64_t sourceDueMs = kNever;
    ReportSource* const source = nextSource(nowMs, sourceDueMs);
    std::optional<Report> report;
    if (queue_.nextDueMs() <= sourceDueMs) {
        report = queue_.take(nowMs);
    } else if (sourceDueMs <= nowMs) {
        report = source->take(nowMs);
    }
    reports_ += report ? 1 : 0;
    return report;
}

uint64_t Scanner::nextEventMs(uint64_t nowMs) {
    uint64_t next = kNever;
    nextSource(nowMs, next);
    next = std::min({next, queue_.nextDueMs(), callFaults_.nextChangeMs(Function::GetStatus, progress(nowMs))});
    for (const Unplug& unplug : unplugs_) {
        next = std::min(next, reachedAtMs(unplug, progress(nowMs)));
    }
    return next;
}

void Scanner::reset(uint64_t nowMs) {
    queue_.dropAfter(nowMs);
    idleMs_ = nowMs;
    offBusUntilMs_ = nowMs + static_cast<uint64_t>(plan_.offBusMs);
    bootedMs_ = std::max(offBusUntilMs_, nowMs + static_cast<uint64_t>(plan_.bootMs));
    if (plan_.bootReport) {
        queue_.put(bootReport(), bootedMs_);
    }
}

void Scanner::queueAnswer(const Answer& answer, uint32_t command, uint64_t startMs) {
    const std::vector<AnswerFault> faults = answerFaults_.meant(command);
    for (AnswerReport entry : answer) {
        const uint64_t workMs = entry.stage == Stage::Pending ? 0 : static_cast<uint64_t>(plan_.workMs);
        idleMs_ = startMs + workMs;
        uint64_t dueMs = idleMs_ + static_cast<uint64_t>(plan_.latencyMs);
        bool dropped = false;
        for (const AnswerFault& fault : faults) {
            if (static_cast<Stage>(fault.stage) != entry.stage) {
                continue;
            }
            dropped = dropped || fault.drop;
            dueMs += static_cast<uint64_t>(fault.delayMs);
            if (fault.state != kNotGiven) {
                setState(entry.report, static_cast<int32_t>(fault.state));
            }
        }
        if (!dropped) {
            queue_.put(entry.report, dueMs);
        }
    }
}

ReportSource* Scanner::nextSource(uint64_t nowMs, uint64_t& dueMs) {
    ReportSource* next = nullptr;
    dueMs = kNever;
    for (ReportSource& source : sources_) {
        // A scanner that boots says nothing by itself.
        const uint64_t sourceDueMs = std::max(source.nextDueMs(progress(nowMs)), bootedMs_);
        if (sourceDueMs < dueMs) {
            next = &source;
            dueMs = sourceDueMs;
        }
    }
    return next;
}

}  // namespace simulator
