#include "simulator/report_queue.h"

#include <algorithm>

namespace simulator {

void ReportQueue::put(const Report& report, uint64_t dueMs) {
    const auto dueLater = [](uint64_t ms, const Entry& entry) { return ms < entry.dueMs; };
    entries_.insert(std::upper_bound(entries_.begin(), entries_.end(), dueMs, dueLater), Entry{dueMs, report});
}

uint64_t ReportQueue::nextDueMs() const {
    return entries_.empty() ? kNever : entries_.front().dueMs;
}

std::optional<Report> ReportQueue::take(uint64_t nowMs) {
    if (nextDueMs() > nowMs || entries_.empty()) {
        return std::nullopt;
    }
    const Report report = entries_.front().report;
    entries_.pop_front();
    return report;
}

void ReportQueue::dropBefore(uint64_t ms) {
    std::erase_if(entries_, [ms](const Entry& entry) { return entry.dueMs < ms; });
}

void ReportQueue::dropAfter(uint64_t ms) {
    std::erase_if(entries_, [ms](const Entry& entry) { return entry.dueMs > ms; });
}

}  // namespace simulator
