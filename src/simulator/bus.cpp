#include "simulator/bus.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "platform/clock.h"
#include "simulator/results.h"
#include "simulator/scenario_reader.h"

namespace simulator {

namespace {

// A fetch with nothing in sight looks again after this; the length does not matter.
constexpr uint64_t kIdleLookMs = 60'000;

Progress busProgress(const Bus& state, uint64_t nowMs) {
    return {state.startMs, nowMs, 0, 0};
}

void buildScanners(Bus& state, ScenarioText& text, Scenario& scenario, uint64_t nowMs) {
    state.built = true;
    state.source = std::move(text.source);
    state.scenario = std::move(scenario);
    state.startMs = nowMs;
    state.callFaults = {};
    state.scanners.clear();
    for (const CallFault& fault : state.scenario.callFaults) {
        if (!hasScanner(static_cast<Function>(fault.function))) {
            state.callFaults.add(fault);
        }
    }
    for (size_t i = 0; i < scannerCount(state.scenario); ++i) {
        state.scanners.emplace_back(state.scenario, i, state.startMs);
    }
}

// Makes the scanners of the chosen scenario unless they are there already.
bool prepareScanners(Bus& state, uint64_t nowMs) {
    ScenarioText text;
    Scenario scenario;
    std::string error;
    if (!findScenario(text, error)) {
        std::fprintf(stderr, "simulated scanner: %s\n", error.c_str());
        return false;
    }
    if (state.built && state.source == text.source) {
        return true;
    }
    if (!readScenario(text, scenario, error)) {
        std::fprintf(stderr, "simulated scanner: %s\n", error.c_str());
        return false;
    }
    buildScanners(state, text, scenario, nowMs);
    return true;
}

void findScanners(Bus& state, uint64_t nowMs) {
    state.onBus.clear();
    for (size_t i = 0; i < state.scanners.size(); ++i) {
        if (state.scanners[i].isOnBus(nowMs)) {
            state.scanners[i].connect();
            state.onBus.push_back(i);
        }
    }
}

bool isServing(const Bus& state) {
    return state.open && !state.closing;
}

// Where a call finds the scanner, nothing when the index is none of the program's.
Scanner* scannerAt(Bus& state, uint32_t index) {
    return index < state.onBus.size() ? &state.scanners[state.onBus[index]] : nullptr;
}

// One look at the scanner: whether the fetch is over, and with which result.
bool isFetchOver(Bus& state, Scanner& scanner, const LibraryCall& call, Report& report, HoxiResult& result) {
    const uint64_t nowMs = platform::nowMs();
    if (!isServing(state)) {
        result = hoxi::kResultLibraryClosed;
        return true;
    }
    if (scanner.isUnplugged(nowMs)) {
        result = hoxi::kResultScannerGone;
        return true;
    }
    result = scanner.faultOf(call, nowMs);
    if (result != kOk) {
        return true;
    }
    const std::optional<Report> next = scanner.takeReport(nowMs);
    if (next) {
        report = *next;
    }
    return next.has_value();
}

HoxiResult waitForReport(Bus& state, std::unique_lock<std::mutex>& lock, Scanner& scanner, Report& report) {
    const LibraryCall call{Function::GetStatus, kNotGiven, ++state.calls};
    HoxiResult result = kOk;
    while (!isFetchOver(state, scanner, call, report, result)) {
        const uint64_t nowMs = platform::nowMs();
        platform::waitUntilMs(state.changed, lock, std::min(scanner.nextEventMs(nowMs), nowMs + kIdleLookMs));
    }
    return result;
}

}  // namespace

Bus& bus() {
    static Bus* const state = std::make_unique<Bus>().release();
    return *state;
}

void resetBus() {
    closeBus();
    Bus& state = bus();
    const std::lock_guard lock(state.mutex);
    state.built = false;
    state.source.clear();
    state.scenario = {};
    state.callFaults = {};
    state.scanners.clear();
    state.onBus.clear();
    state.putTimeoutMs = 1000;
    state.getTimeoutMs = 1000;
    state.breakEnabled = false;
}

HoxiResult openBus(uint32_t& scannerCount) {
    Bus& state = bus();
    const std::lock_guard lock(state.mutex);
    scannerCount = 0;
    if (state.open) {
        return kAlreadyOpen;
    }
    const uint64_t nowMs = platform::nowMs();
    if (!prepareScanners(state, nowMs)) {
        return kBadScenario;
    }
    const HoxiResult fault = state.callFaults.resultOf({Function::Initialize}, busProgress(state, nowMs));
    if (fault != kOk) {
        return fault;
    }
    findScanners(state, nowMs);
    scannerCount = static_cast<uint32_t>(state.onBus.size());
    state.open = true;
    return kOk;
}

HoxiResult closeBus() {
    Bus& state = bus();
    std::unique_lock lock(state.mutex);
    if (!isServing(state)) {
        return kNotOpen;
    }
    state.closing = true;
    state.changed.notify_all();
    state.left.wait(lock, [&] { return state.waiting == 0; });
    state.open = false;
    state.closing = false;
    return state.callFaults.resultOf({Function::Terminate}, busProgress(state, platform::nowMs()));
}

Call::Call(Function function) : lock_(bus().mutex), result_(kNotOpen) {
    Bus& state = bus();
    if (isServing(state)) {
        nowMs_ = platform::nowMs();
        result_ = state.callFaults.resultOf({function}, busProgress(state, nowMs_));
    }
}

Call::Call(Function function, uint32_t scannerIndex, int64_t command) : lock_(bus().mutex), result_(kNotOpen) {
    Bus& state = bus();
    if (!isServing(state)) {
        return;
    }
    nowMs_ = platform::nowMs();
    scanner_ = scannerAt(state, scannerIndex);
    if (scanner_ == nullptr) {
        result_ = kNoSuchScanner;
    } else if (!scanner_->isOnBus(nowMs_)) {
        result_ = hoxi::kResultScannerGone;
    } else {
        result_ = scanner_->faultOf({function, command}, nowMs_);
    }
}

HoxiResult fetchReport(uint32_t scannerIndex, Report& report) {
    Bus& state = bus();
    std::unique_lock lock(state.mutex);
    if (!isServing(state)) {
        return hoxi::kResultLibraryClosed;
    }
    Scanner* const scanner = scannerAt(state, scannerIndex);
    if (scanner == nullptr) {
        return kNoSuchScanner;
    }
    ++state.waiting;
    const HoxiResult result = waitForReport(state, lock, *scanner, report);
    --state.waiting;
    if (state.closing) {
        state.left.notify_all();
    }
    return result;
}

}  // namespace simulator
