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

AnswerReport pending(const CommandPacket& packet);
AnswerReport ended(const CommandPacket& packet, int32_t state);
// Pending, then ended in a state.
Answer answer(const CommandPacket& packet, int32_t state);
// Pending, what was asked for, complete.
Answer answerWithData(const CommandPacket& packet, const ReportWriter& data);

}  // namespace simulator
