#include "simulator/outbox.h"

#include <algorithm>

#include "hoxi/hoxi_codes.h"

namespace simulator {

bool Reply::alter(Stage stage, Report& report, uint64_t& dueMs) {
    const int64_t part = ++given_[static_cast<size_t>(stage)];
    bool comes = true;
    for (const AnswerFault& fault : faults_) {
        if (static_cast<Stage>(fault.stage) != stage || (fault.part != 0 && fault.part != part)) {
            continue;
        }
        comes = comes && !fault.drop;
        dueMs += static_cast<uint64_t>(fault.delayMs);
        if (fault.state != kNotGiven) {
            setState(report, static_cast<int32_t>(fault.state));
        }
        if (fault.value != kNotGiven) {
            setBodyWord(report, static_cast<size_t>(fault.word), static_cast<uint32_t>(fault.value));
        }
    }
    return comes;
}

void Outbox::say(Reply& reply, Stage stage, Report report, uint64_t dueMs) {
    if (codeOf(report) == hoxi::STA_COMMAND) {
        notes_.push_back({tagOf(report), stateOf(report), dueMs});
        if (notes_.size() > kMostNotes) {
            notes_.pop_front();
        }
    }
    if (reply.alter(stage, report, dueMs)) {
        queue_.put(report, dueMs);
    }
}

std::optional<int32_t> Outbox::commandState(uint32_t tag, uint64_t nowMs) const {
    std::optional<int32_t> state;
    for (const Note& note : notes_) {
        if (note.tag == tag && (!state || note.sinceMs <= nowMs)) {
            state = note.sinceMs <= nowMs ? note.state : hoxi::kPending;
        }
    }
    return state;
}

}  // namespace simulator
