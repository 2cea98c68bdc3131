// The command interpreter: what a scanner answers to each command, as tables by command code.
#pragma once

#include <cstdint>

#include "simulator/answer.h"
#include "simulator/command_packet.h"

namespace simulator {

class Scanner;

// Carries the command out on the scanner and returns its answer in order. A command that no table names does nothing
// and is answered as pending, then as complete, so that scripts run. nowMs is platform::nowMs().
Answer runCommand(Scanner& scanner, const CommandPacket& packet, uint64_t nowMs);

// The report that a scanner makes at the end of its boot.
Report bootReport();

}  // namespace simulator
