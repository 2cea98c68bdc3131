// Commands by subject: each file has a table of the codes that it answers. New commands are new rows.
#pragma once

#include <cstdint>
#include <span>

#include "simulator/answer.h"
#include "simulator/command_packet.h"
#include "simulator/device.h"
#include "simulator/failure_states.h"
#include "simulator/report_writer.h"

namespace simulator {

class Scanner;

struct Request {
    Scanner& scanner;
    Device& device;
    const CommandPacket& packet;
    uint64_t nowMs;
};

struct CommandRow {
    uint32_t code;
    Answer (*run)(const Request& request);
};

std::span<const CommandRow> captureCommands();
std::span<const CommandRow> imageCommands();
std::span<const CommandRow> queryCommands();
std::span<const CommandRow> boardCommands();
std::span<const CommandRow> parameterCommands();
std::span<const CommandRow> uploadCommands();
std::span<const CommandRow> displayCommands();

AnswerReport pending(const CommandPacket& packet);
AnswerReport ended(const CommandPacket& packet, int32_t state);
// Pending, then ended in a state.
Answer answer(const CommandPacket& packet, int32_t state);
// Pending, what was asked for, complete.
Answer answerWithData(const CommandPacket& packet, const ReportWriter& data);

// Pending, then a transfer: first it is reported ready unless the program is to go ahead by itself, and complete once
// the data has been moved.
Answer answerWithTransfer(const CommandPacket& packet, DataOrder order);

}  // namespace simulator
