#include "simulator/command_packet.h"

#include <algorithm>

namespace simulator {

namespace {

uint32_t readWord(std::span<const uint8_t> bytes, size_t offset) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) {
        value |= static_cast<uint32_t>(bytes[offset + i]) << (8 * i);
    }
    return value;
}

}  // namespace

std::span<const uint8_t> PayloadReader::bytes(size_t count) {
    missing_ = missing_ || count > payload_.size();
    const auto taken = payload_.first(std::min(count, payload_.size()));
    payload_ = payload_.subspan(taken.size());
    return taken;
}

uint32_t PayloadReader::take(size_t count) {
    uint32_t value = 0;
    uint32_t shift = 0;
    for (const uint8_t byte : bytes(count)) {
        value |= static_cast<uint32_t>(byte) << shift;
        shift += 8;
    }
    return value;
}

std::optional<CommandPacket> readPacket(std::span<const uint8_t> bytes) {
    if (bytes.size() < kPacketHeaderSize || readWord(bytes, 8) > bytes.size() - kPacketHeaderSize) {
        return std::nullopt;
    }
    return CommandPacket{readWord(bytes, 0), readWord(bytes, 4), bytes.subspan(kPacketHeaderSize)};
}

}  // namespace simulator
