#include "simulator/commands.h"

#include "hoxi/hoxi_codes.h"
#include "simulator/scanner.h"

namespace simulator {

namespace {

struct Request {
    Scanner& scanner;
    const CommandPacket& packet;
    uint64_t nowMs;
};

AnswerReport commandReport(const CommandPacket& packet, Stage stage, int32_t state) {
    return {stage, ReportWriter(hoxi::STA_COMMAND, state, packet.tag).report()};
}

AnswerReport pending(const CommandPacket& packet) {
    return commandReport(packet, Stage::Pending, hoxi::kPending);
}

AnswerReport complete(const CommandPacket& packet) {
    return commandReport(packet, Stage::Complete, hoxi::kComplete);
}

Answer answerWithData(const CommandPacket& packet, const ReportWriter& data) {
    return {pending(packet), {Stage::Data, data.report()}, complete(packet)};
}

Answer runNop(const Request& request) {
    return {{Stage::Complete, ReportWriter(hoxi::STA_NOP, hoxi::kComplete, request.packet.tag).report()}};
}

Answer runReset(const Request& request) {
    request.scanner.reset(request.nowMs);
    return {pending(request.packet)};
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

Answer runNothing(const Request& request) {
    return {pending(request.packet), complete(request.packet)};
}

struct CommandRow {
    uint32_t code;
    Answer (*run)(const Request& request);
};

constexpr CommandRow kCommands[] = {
    {hoxi::CMD_NOP, runNop},
    {hoxi::CMD_RESET, runReset},
    {hoxi::CMD_SEND_VERS, runSendVersion},
    {hoxi::CMD_SEND_IMG_VERS, runSendImageVersion},
};

}  // namespace

Answer runCommand(Scanner& scanner, const CommandPacket& packet, uint64_t nowMs) {
    const Request request{scanner, packet, nowMs};
    for (const CommandRow& row : kCommands) {
        if (row.code == packet.code) {
            return row.run(request);
        }
    }
    return runNothing(request);
}

Report bootReport() {
    return ReportWriter(hoxi::STA_RESET, hoxi::kComplete, 0).report();
}

}  // namespace simulator
