// One command packet from the description of its payload. Pure; any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "hoxi/hoxi_codes.h"
#include "link/command_channel.h"
#include "operations/packet_writer.h"

namespace operations {

// Neighbouring values of one width: arguments in the order of the line, or bytes that are always the same.
struct Field {
    size_t width = 0;  // bytes of one value
    size_t count = 0;  // how many of them, 0 for none
    bool fromLine = false;
    uint32_t constant = 0;  // the value when it is not from the line
};

struct CommandLayout {
    hoxi::Command code;
    uint32_t size;  // payload bytes as the header states them
    Field fields[7] = {};
};

inline constexpr size_t kMaxPayload = 52;  // bytes of the longest layout

// Header and payload; the first `length` bytes are what is sent.
struct Packet {
    std::array<uint8_t, sizeof(scannerlink::CommandHeader) + kMaxPayload> bytes{};
    size_t length = 0;
};

constexpr size_t argumentCount(const CommandLayout& layout) {
    size_t count = 0;
    for (const Field& field : layout.fields)
        count += field.fromLine ? field.count : 0;
    return count;
}

constexpr size_t payloadLength(const CommandLayout& layout) {
    size_t length = 0;
    for (const Field& field : layout.fields)
        length += field.width * field.count;
    return length;
}

// Arguments are cut to the width of their field; those that are not given are sent as 0. What is beyond the room of a
// packet would be left out, which no layout within kMaxPayload reaches.
constexpr Packet buildPacket(const CommandLayout& layout, uint32_t tag, std::span<const uint32_t> arguments) {
    Packet packet;
    PacketWriter writer(packet.bytes);
    for (const uint32_t word : {static_cast<uint32_t>(layout.code), tag, layout.size})
        writer.put(word, sizeof word);
    size_t next = 0;
    for (const Field& field : layout.fields)
        for (size_t i = 0; i < field.count; ++i) {
            const bool taken = field.fromLine && next < arguments.size();
            writer.put(taken ? arguments[next++] : field.constant, field.width);
        }
    packet.length = writer.length();
    return packet;
}

}  // namespace operations
