// What a scanner has to say, each report at its time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

#include "simulator/report_writer.h"

namespace simulator {

// A time that never comes.
inline constexpr uint64_t kNever = UINT64_MAX;

// Reports in the order in which they fall due; those due at the same time in the order in which they were put.
// Times are milliseconds of platform::nowMs(). Not locked: belongs to the scanner.
class ReportQueue {
public:
    void put(const Report& report, uint64_t dueMs);
    // The time of the next report, kNever when there is none.
    uint64_t nextDueMs() const;
    // Takes the next report if it is due.
    std::optional<Report> take(uint64_t nowMs);
    // Forgets the reports due before a time, or after it.
    void dropBefore(uint64_t ms);
    void dropAfter(uint64_t ms);
    size_t size() const { return entries_.size(); }

private:
    struct Entry {
        uint64_t dueMs;
        Report report;
    };
    std::deque<Entry> entries_;
};

}  // namespace simulator
