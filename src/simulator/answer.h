// What a scanner answers to one command, before it knows when: its reports, and what it goes on with behind them.
#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "simulator/capture_desk.h"
#include "simulator/data_channel.h"
#include "simulator/image_channel.h"
#include "simulator/report_writer.h"
#include "simulator/scenario.h"

namespace simulator {

// One report of an answer. The scanner knows its own pace; what takes longer than that says by how much.
struct AnswerReport {
    Stage stage;
    Report report;
    uint64_t waitMs = 0;
};

// Ends the capture under way: gives it up, or acts as one of the scanner's keys.
struct CaptureStop {
    CaptureKey key;
};

struct Answer {
    std::vector<AnswerReport> reports;
    // Begins when the last of the reports is due, and answers further in the name of the command.
    std::variant<std::monostate, CaptureOrder, CaptureStop, TransferOrder, DataOrder> then;
};

}  // namespace simulator
