// Faults at work: the scenario's data together with how often each has come by. Not locked: belong to their owner.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hoxi/hoxi.h"
#include "simulator/report_queue.h"
#include "simulator/report_writer.h"
#include "simulator/scenario.h"

namespace simulator {

// How far things have come: since the scenario's first HoxiInitialize, and with one scanner.
struct Progress {
    uint64_t startMs = 0;
    uint64_t nowMs = 0;
    uint64_t commands = 0;
    uint64_t reports = 0;
};

bool isReached(const Trigger& trigger, const Progress& progress);
// When a trigger that is not reached yet may be by time alone; kNever when it awaits commands or reports too.
uint64_t reachedAtMs(const Trigger& trigger, const Progress& progress);

// Counts one occasion and tells whether it is meant.
class OccasionCounter {
public:
    bool isHit(const Occurrence& occurrence);

private:
    uint64_t seen_ = 0;
};

// One call that may be made to fail. The serial number tells calls apart, so that one that waits is counted once.
struct LibraryCall {
    Function function;
    int64_t command = kNotGiven;
    uint64_t serial = 0;
};

class CallFaults {
public:
    void add(const CallFault& fault) { entries_.push_back({fault, {}, 0}); }
    // The result that the call fails with, 0 when it does not.
    HoxiResult resultOf(const LibraryCall& call, const Progress& progress);
    // When the next fault of a function may begin by time alone; kNever when none will.
    uint64_t nextChangeMs(Function function, const Progress& progress) const;

private:
    struct Entry {
        CallFault fault;
        OccasionCounter counter;
        uint64_t lastSerial;
    };
    std::vector<Entry> entries_;
};

class AnswerFaults {
public:
    void add(const AnswerFault& fault) { entries_.push_back({fault, {}}); }
    // The faults that befall the answer to this command.
    std::vector<AnswerFault> meant(uint32_t command);

private:
    struct Entry {
        AnswerFault fault;
        OccasionCounter counter;
    };
    std::vector<Entry> entries_;
};

class TransferFaults {
public:
    void add(const TransferFault& fault) { entries_.push_back({fault, {}}); }
    // What befalls this call; of several faults the first.
    std::optional<TransferFault> meant(Function function);

private:
    struct Entry {
        TransferFault fault;
        OccasionCounter counter;
    };
    std::vector<Entry> entries_;
};

// Makes the reports of one UnaskedReport, one at a time.
class ReportSource {
public:
    explicit ReportSource(const UnaskedReport& plan) : plan_(plan) {}
    // When the next report is due: kNever when the last is out or the trigger awaits commands or reports.
    uint64_t nextDueMs(const Progress& progress);
    Report take(uint64_t nowMs);

private:
    UnaskedReport plan_;
    uint64_t emitted_ = 0;
    std::optional<uint64_t> dueMs_;
};

}  // namespace simulator
