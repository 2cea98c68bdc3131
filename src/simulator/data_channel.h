// The memory or the bitmap channel of one scanner: one transfer at a time, in blocks, to the program or from it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "simulator/outbox.h"
#include "simulator/transfer_block.h"

namespace simulator {

struct Device;

struct DataOrder {
    uint32_t tag = 0;
    bool isBitmap = false;
    bool isToProgram = false;
    bool isConfirmed = true;     // the scanner says when it is ready
    bool isImmediate = false;    // the program may put its data right behind the command, ready or not
    uint64_t recordMs = 0;       // from the last byte until the command is complete
    size_t byteCount = 0;        // of the whole transfer
    std::vector<uint8_t> bytes;  // what goes to the program, or has come from it
    // What becomes of the data once all of it has come from the program.
    std::function<void(Device& device, std::vector<uint8_t> bytes)> keep;
};

// Says that the transfer may begin.
Report readyReport(const DataOrder& order);

class DataChannel {
public:
    // The functions that faults know the channel's calls by.
    DataChannel(Function put, Function get) : put_(put), get_(get) {}

    // Takes the place of a transfer that is under way: its program has given it up. Blocks are moved from readyMs on.
    void open(DataOrder order, const Reply& reply, uint64_t readyMs);
    // Moves the next block to the program.
    BlockResult get(std::span<uint8_t> block, uint64_t nowMs, Device& device);
    // Moves the next block from the program. One that does not go with what was announced fails the command.
    BlockResult put(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs, Device& device);
    void close() { current_.reset(); }

private:
    struct Current {
        DataOrder order;
        Reply reply;
        uint64_t readyMs;
        size_t position = 0;
        uint32_t blocks = 0;
    };

    bool isReady(bool isToProgram, uint64_t nowMs) const;
    size_t rest() const { return current_->order.byteCount - current_->position; }
    bool fits(std::span<const uint8_t> block, uint32_t flags) const;
    void end(int32_t state, uint64_t nowMs, Device& device);

    Function put_;
    Function get_;
    std::optional<Current> current_;
};

}  // namespace simulator
