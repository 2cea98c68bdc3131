#include "simulator/command_packet.h"

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

std::optional<CommandPacket> readPacket(std::span<const uint8_t> bytes) {
    if (bytes.size() < kPacketHeaderSize || readWord(bytes, 8) > bytes.size() - kPacketHeaderSize) {
        return std::nullopt;
    }
    return CommandPacket{readWord(bytes, 0), readWord(bytes, 4), bytes.subspan(kPacketHeaderSize)};
}

}  // namespace simulator
