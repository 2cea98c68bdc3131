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

// Takes the fields of a payload, one after the other. What lies beyond its end reads as 0 and is remembered as missing.
class PayloadReader {
public:
    explicit PayloadReader(std::span<const uint8_t> payload) : payload_(payload) {}

    uint8_t u8() { return static_cast<uint8_t>(take(1)); }
    uint16_t u16() { return static_cast<uint16_t>(take(2)); }
    uint32_t u32() { return take(4); }
    // So many bytes, fewer when the payload ends before.
    std::span<const uint8_t> bytes(size_t count);
    bool isMissing() const { return missing_; }

private:
    uint32_t take(size_t count);

    std::span<const uint8_t> payload_;
    bool missing_ = false;
};

// Nothing when the packet is shorter than its header or than its size field says. It may be longer: some commands
// state no size though a payload follows, and others are filled up with zeros to a fixed length.
std::optional<CommandPacket> readPacket(std::span<const uint8_t> bytes);

}  // namespace simulator
