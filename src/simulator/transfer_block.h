// One call of a data channel: how much it moves, and what the scenario's faults make of it. Pure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "hoxi/hoxi.h"
#include "simulator/scenario.h"

namespace simulator {

// What one call did.
struct BlockResult {
    HoxiResult result = 0;
    uint32_t moved = 0;  // bytes
    uint32_t flags = 0;  // hoxi::kFirstTransfer and hoxi::kLastTransfer, of a block to the program
};

// How many bytes move: no more than were asked for, are there, are allowed at once and the fault lets through.
size_t blockSize(size_t asked, size_t there, uint64_t limit, const std::optional<TransferFault>& fault);
// Turns over the bits of the byte that the fault names, if the block has it.
void corrupt(std::span<uint8_t> block, const std::optional<TransferFault>& fault);
// What the program is told of a block that was moved.
BlockResult resultOf(size_t moved, uint32_t flags, const std::optional<TransferFault>& fault);

}  // namespace simulator
