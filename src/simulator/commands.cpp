#include "simulator/commands.h"

#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/command_rows.h"
#include "simulator/scanner.h"

namespace simulator {

namespace {

Answer runNop(const Request& request) {
    const Report report = ReportWriter(hoxi::STA_NOP, hoxi::kComplete, request.packet.tag).report();
    return {{{Stage::Complete, report}}, {}};
}

Answer runReset(const Request& request) {
    request.scanner.reset(request.nowMs);
    return {{pending(request.packet)}, {}};
}

Answer runSendVersion(const Request& request) {
    const ScannerPlan& plan = request.scanner.plan();
    ReportWriter report(hoxi::STA_VERSION, hoxi::kComplete, request.packet.tag);
    report.field(plan.make, 8).field(plan.model, 16).field(plan.serial, 16);
    report.u16(static_cast<uint16_t>(plan.year));
    report.u8(static_cast<uint8_t>(plan.month)).u8(static_cast<uint8_t>(plan.day));
    report.field(plan.softwareVersion, 12).u16(static_cast<uint16_t>(plan.softwareYear));
    report.u8(static_cast<uint8_t>(plan.softwareMonth)).u8(static_cast<uint8_t>(plan.softwareDay));
    return answerWithData(request.packet, report);
}

Answer runSendImageVersion(const Request& request) {
    ReportWriter report(hoxi::STA_IMG_VERSION, hoxi::kComplete, request.packet.tag);
    report.text(request.scanner.plan().imageVersion);
    return answerWithData(request.packet, report);
}

constexpr CommandRow kCommands[] = {
    {hoxi::CMD_NOP, runNop},
    {hoxi::CMD_RESET, runReset},
    {hoxi::CMD_SEND_VERS, runSendVersion},
    {hoxi::CMD_SEND_IMG_VERS, runSendImageVersion},
};

const CommandRow* findCommand(uint32_t code) {
    const std::span<const CommandRow> tables[] = {kCommands,        captureCommands(), imageCommands(),
                                                  queryCommands(),  boardCommands(),   parameterCommands(),
                                                  uploadCommands(), displayCommands()};
    for (const std::span<const CommandRow> table : tables) {
        for (const CommandRow& row : table) {
            if (row.code == code) {
                return &row;
            }
        }
    }
    return nullptr;
}

}  // namespace

AnswerReport pending(const CommandPacket& packet) {
    return {Stage::Pending, ReportWriter(hoxi::STA_COMMAND, hoxi::kPending, packet.tag).report()};
}

AnswerReport ended(const CommandPacket& packet, int32_t state) {
    return {Stage::Complete, ReportWriter(hoxi::STA_COMMAND, state, packet.tag).report()};
}

Answer answer(const CommandPacket& packet, int32_t state) {
    return {{pending(packet), ended(packet, state)}, {}};
}

Answer answerWithData(const CommandPacket& packet, const ReportWriter& data) {
    return {{pending(packet), {Stage::Data, data.report()}, ended(packet, hoxi::kComplete)}, {}};
}

Answer answerWithTransfer(const CommandPacket& packet, DataOrder order) {
    Answer result{{pending(packet)}, {}};
    order.tag = packet.tag;
    if (order.isConfirmed) {
        result.reports.push_back({Stage::Ready, readyReport(order)});
    }
    result.then = std::move(order);
    return result;
}

Answer runCommand(Scanner& scanner, const CommandPacket& packet, uint64_t nowMs) {
    const CommandRow* const row = findCommand(packet.code);
    return row == nullptr ? answer(packet, hoxi::kComplete) : row->run({scanner, scanner.device(), packet, nowMs});
}

Report bootReport() {
    return ReportWriter(hoxi::STA_RESET, hoxi::kComplete, 0).report();
}

}  // namespace simulator
