// Command packets as they arrive: three little-endian words, then the payload. Read within their bounds only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace simulator {

inline constexpr size_t kPacketHeaderSize = 12;

struct CommandPacket {
    uint32_t code = 0;
    uint32_t tag = 0;
    std::span<const uint8_t> payload;  // everything behind the header, whatever the size field says
};

// Nothing when the packet is shorter than its header or than its size field says. It may be longer: some commands
// state no size though a payload follows, and others are filled up with zeros to a fixed length.
std::optional<CommandPacket> readPacket(std::span<const uint8_t> bytes);

}  // namespace simulator
