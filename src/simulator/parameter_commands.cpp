// Commands on the parameter sets: their values go over the memory channel.
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/command_rows.h"

namespace simulator {

namespace {

// Bits of the answer to a check.
constexpr int32_t kIsValid = 1;
constexpr int32_t kIsSaveable = 2;
constexpr int32_t kIsModified = 4;

// 0 when the command names a set and the length that it has; otherwise why it fails.
int32_t refusalOf(const Request& request, uint32_t& set) {
    PayloadReader payload(request.packet.payload);
    set = payload.u32();
    const size_t byteCount = payload.u32();
    if (payload.isMissing()) {
        return kBadParameter;
    }
    const size_t length = ParameterStore::length(set);
    if (length == 0) {
        return kNoSuchThing;
    }
    return byteCount != length ? kBadParameter : 0;
}

Answer runSet(const Request& request) {
    uint32_t set = 0;
    if (const int32_t refusal = refusalOf(request, set)) {
        return answer(request.packet, refusal);
    }
    DataOrder order;
    order.byteCount = ParameterStore::length(set);
    order.keep = [set](Device& device, std::vector<uint8_t> bytes) { device.parameters.set(set, std::move(bytes)); };
    return answerWithTransfer(request.packet, std::move(order));
}

template <ParameterStore::Values (ParameterStore::*values)(uint32_t) const>
Answer runGet(const Request& request) {
    uint32_t set = 0;
    if (const int32_t refusal = refusalOf(request, set)) {
        return answer(request.packet, refusal);
    }
    DataOrder order;
    order.isToProgram = true;
    order.bytes = (request.device.parameters.*values)(set);
    order.byteCount = order.bytes.size();
    return answerWithTransfer(request.packet, std::move(order));
}

Answer runCheck(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t set = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    int32_t findings = 0;
    if (ParameterStore::length(set) != 0) {
        findings = kIsValid | kIsSaveable | (request.device.parameters.isModified(set) ? kIsModified : 0);
    }
    return answerWithData(request.packet, ReportWriter(hoxi::CMD_CHECK_PARAMETERS, findings, request.packet.tag));
}

template <void (ParameterStore::*act)()>
Answer runWithAll(const Request& request) {
    (request.device.parameters.*act)();
    return answer(request.packet, hoxi::kComplete);
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_SET_PARAMETERS, runSet},
    {hoxi::CMD_GET_PARAMETERS, runGet<&ParameterStore::current>},
    {hoxi::CMD_SAVE_PARAMETERS, runWithAll<&ParameterStore::save>},
    {hoxi::CMD_RESTORE_PARAMETERS, runWithAll<&ParameterStore::restore>},
    {hoxi::CMD_CHECK_PARAMETERS, runCheck},
    {hoxi::CMD_RESTORE_DEF_PARAMETERS, runWithAll<&ParameterStore::restoreDefaults>},
    {hoxi::CMD_GET_DEF_PARAMETERS, runGet<&ParameterStore::defaults>},
};

}  // namespace

std::span<const CommandRow> parameterCommands() {
    return kRows;
}

}  // namespace simulator
