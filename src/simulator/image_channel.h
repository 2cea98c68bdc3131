// The image channel of one scanner: one transfer at a time, in blocks, to the program or from it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "simulator/image_store.h"
#include "simulator/outbox.h"
#include "simulator/transfer_block.h"

namespace simulator {

struct Device;

struct TransferOrder {
    uint32_t tag = 0;
    ImageKey key;
    bool isToProgram = false;
    Image image;  // from the program: what it will be, its pixels as many as are to come
};

class ImageChannel {
public:
    // Takes the place of a transfer that is under way: its program has given it up. Blocks are moved from readyMs on.
    void open(TransferOrder order, const Reply& reply, uint64_t readyMs, Device& device);
    // Moves the next block to the program.
    BlockResult get(std::span<uint8_t> block, uint64_t nowMs, Device& device);
    // Moves the next block from the program. One that does not go with what was announced ends the transfer.
    BlockResult put(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs, Device& device);
    void close() { current_.reset(); }

private:
    struct Current {
        TransferOrder order;
        Reply reply;
        uint64_t readyMs;
        size_t position = 0;
        uint32_t blocks = 0;
    };

    bool isReady(bool isToProgram, uint64_t nowMs) const;
    std::span<uint8_t> rest();
    void say(Stage stage, uint32_t transferState, uint64_t ms, Device& device);
    void finishSending(uint64_t nowMs, Device& device);
    bool fits(std::span<const uint8_t> block, uint32_t flags) const;
    bool receive(bool isLast, Device& device);

    std::optional<Current> current_;
};

}  // namespace simulator
