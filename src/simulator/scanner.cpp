#include "simulator/scanner.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <variant>

#include "hoxi/hoxi_codes.h"
#include "simulator/display_picture.h"

namespace simulator {

namespace {

bool isFor(int64_t wanted, size_t index) {
    return wanted == kNotGiven || wanted == static_cast<int64_t>(index);
}

void save(const std::string& picture, const std::string& path) {
    if (!savePicture(picture, path)) {
        std::fprintf(stderr, "simulated scanner: can't write %s\n", path.c_str());
    }
}

}  // namespace

Scanner::Scanner(const Scenario& scenario, size_t index, uint64_t startMs)
    : plan_(scannerPlan(scenario, index)), startMs_(startMs), device_(plan_, index) {
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
    for (const TransferFault& fault : scenario.transferFaults) {
        if (isFor(fault.scanner, index)) {
            device_.transferFaults.add(fault);
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
    device_.outbox.queue().dropBefore(offBusUntilMs_);
}

HoxiResult Scanner::faultOf(const LibraryCall& call, uint64_t nowMs) {
    return callFaults_.resultOf(call, progress(nowMs));
}

void Scanner::execute(const CommandPacket& packet, uint64_t nowMs) {
    ++commands_;
    device_.captureDesk.advance(nowMs, device_);
    Reply reply(answerFaults_.meant(packet.code));
    Answer answer = runCommand(*this, packet, nowMs);
    logErrors(packet.code, answer);
    const uint64_t startMs = std::max(nowMs, idleMs_);
    const uint64_t dueMs = queueAnswer(answer, reply, startMs);
    goOn(answer, reply, dueMs, startMs);
    idleMs_ = std::max(idleMs_, bootedMs_);
    saveDisplays();
}

void Scanner::logErrors(uint32_t code, const Answer& answer) {
    for (const AnswerReport& entry : answer.reports) {
        if (entry.stage == Stage::Complete && stateOf(entry.report) > hoxi::kComplete) {
            device_.board.logError(code, stateOf(entry.report));
        }
    }
}

BlockResult Scanner::putData(DataChannel& channel, std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs) {
    const BlockResult result = channel.put(block, flags, nowMs, device_);
    saveDisplays();
    return result;
}

std::optional<Report> Scanner::takeReport(uint64_t nowMs) {
    device_.captureDesk.advance(nowMs, device_);
    ReportQueue& queue = device_.outbox.queue();
    uint64_t sourceDueMs = kNever;
    ReportSource* const source = nextSource(nowMs, sourceDueMs);
    std::optional<Report> report;
    if (queue.nextDueMs() <= sourceDueMs) {
        report = queue.take(nowMs);
    } else if (sourceDueMs <= nowMs) {
        report = source->take(nowMs);
    }
    reports_ += report ? 1 : 0;
    return report;
}

uint64_t Scanner::nextEventMs(uint64_t nowMs) {
    uint64_t next = kNever;
    nextSource(nowMs, next);
    next = std::min({next, device_.outbox.queue().nextDueMs(), device_.captureDesk.nextMs(),
                     callFaults_.nextChangeMs(Function::GetStatus, progress(nowMs))});
    for (const Unplug& unplug : unplugs_) {
        next = std::min(next, reachedAtMs(unplug, progress(nowMs)));
    }
    return next;
}

void Scanner::reset(uint64_t nowMs) {
    device_.outbox.queue().dropAfter(nowMs);
    device_.powerUp(plan_);
    idleMs_ = nowMs;
    offBusUntilMs_ = nowMs + static_cast<uint64_t>(plan_.offBusMs);
    bootedMs_ = std::max(offBusUntilMs_, nowMs + static_cast<uint64_t>(plan_.bootMs));
    if (plan_.bootReport) {
        device_.outbox.queue().put(bootReport(), bootedMs_);
    }
}

// Returns when the last of the reports is due, faults aside.
uint64_t Scanner::queueAnswer(const Answer& answer, Reply& reply, uint64_t startMs) {
    uint64_t dueMs = startMs;
    for (const AnswerReport& entry : answer.reports) {
        const uint64_t workMs = entry.stage == Stage::Pending ? 0 : static_cast<uint64_t>(plan_.workMs);
        idleMs_ = startMs + workMs;
        dueMs = idleMs_ + device_.latencyMs + entry.waitMs;
        device_.outbox.say(reply, entry.stage, entry.report, dueMs);
    }
    return dueMs;
}

// A stop acts when it is taken up, not when it has been reported as complete.
void Scanner::goOn(Answer& answer, const Reply& reply, uint64_t dueMs, uint64_t startMs) {
    if (auto* const capture = std::get_if<CaptureOrder>(&answer.then)) {
        device_.captureDesk.begin(std::move(*capture), reply, dueMs);
    } else if (const auto* const stop = std::get_if<CaptureStop>(&answer.then)) {
        device_.captureDesk.press(stop->key, startMs + device_.latencyMs, device_);
    } else if (auto* const transfer = std::get_if<TransferOrder>(&answer.then)) {
        device_.imageChannel.open(std::move(*transfer), reply, dueMs, device_);
    } else if (auto* const data = std::get_if<DataOrder>(&answer.then)) {
        DataChannel& channel = data->isBitmap ? device_.bitmapChannel : device_.memoryChannel;
        channel.open(std::move(*data), reply, dueMs);
    }
}

// Whoever looks at the pictures sees what a person in front of the displays would see.
void Scanner::saveDisplays() {
    if (device_.display.takeChange() && !plan_.displayFile.empty()) {
        save(displayPicture(device_.display), plan_.displayFile);
    }
    if (device_.remoteDisplay.takeChange() && !plan_.remoteMapFile.empty()) {
        save(mapPicture(device_.remoteDisplay.map()), plan_.remoteMapFile);
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
