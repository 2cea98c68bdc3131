// Lays numbers into a command packet: little-endian, packed, never past the end of the room. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace operations {

class PacketWriter {
public:
    // The room stays the caller's and is written from its start.
    constexpr explicit PacketWriter(std::span<uint8_t> room) : room_(room) {}

    // Appends the low `width` bytes of the value, lowest first; width is 1 to 4. A value that does not fit whole is
    // left out, and so is everything after it.
    constexpr void put(uint32_t value, size_t width) {
        if (overrun_ || room_.size() - length_ < width) {
            overrun_ = true;
            return;
        }
        for (size_t i = 0; i < width; ++i)
            room_[length_++] = static_cast<uint8_t>(value >> (8 * i));
    }

    constexpr size_t length() const { return length_; }
    // Something was left out.
    constexpr bool overrun() const { return overrun_; }

private:
    std::span<uint8_t> room_;
    size_t length_ = 0;
    bool overrun_ = false;
};

}  // namespace operations
