// The way of a scanner's reports to the program: through the faults that befall them into the queue, and what the
// scanner remembers of it.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "simulator/report_queue.h"
#include "simulator/report_writer.h"
#include "simulator/scenario.h"

namespace simulator {

// One command under way: the faults that are meant for its answer, and how much of the answer has been given.
class Reply {
public:
    Reply() = default;
    explicit Reply(std::vector<AnswerFault> faults) : faults_(std::move(faults)) {}

    // Changes the next report of a stage and its time as the faults have it. False when it does not come at all.
    bool alter(Stage stage, Report& report, uint64_t& dueMs);

private:
    std::vector<AnswerFault> faults_;
    std::array<int64_t, kStageCount> given_{};
};

class Outbox {
public:
    // How many states of commands are remembered.
    static constexpr size_t kMostNotes = 512;

    void say(Reply& reply, Stage stage, Report report, uint64_t dueMs);
    // The state of the latest command with this tag at a time: pending before its first report is due. Nothing when it
    // is not remembered. Faults do not show here: they happen on the way.
    std::optional<int32_t> commandState(uint32_t tag, uint64_t nowMs) const;
    void forgetCommands() { notes_.clear(); }

    ReportQueue& queue() { return queue_; }
    const ReportQueue& queue() const { return queue_; }

private:
    struct Note {
        uint32_t tag;
        int32_t state;
        uint64_t sinceMs;
    };

    ReportQueue queue_;
    std::deque<Note> notes_;
};

}  // namespace simulator
