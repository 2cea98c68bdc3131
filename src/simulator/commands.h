// The command interpreter: what a scanner answers to each command, as a table by command code.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/command_packet.h"
#include "simulator/report_writer.h"
#include "simulator/scenario.h"

namespace simulator {

class Scanner;

// One report of an answer, without its time: the scanner knows its own pace.
struct AnswerReport {
    Stage stage;
    Report report;
};

using Answer = std::vector<AnswerReport>;

// Carries the command out on the scanner and returns its answer in order. A command that the table does not name does
// nothing and is answered as pending, then as complete, so that scripts run. nowMs is platform::nowMs().
Answer runCommand(Scanner& scanner, const CommandPacket& packet, uint64_t nowMs);

// The report that a scanner makes at the end of its boot.
Report bootReport();

}  // namespace simulator
