// The one loop that moves data between host and scanner, on the image, memory and bitmap channels, in blocks that the
// current scanner takes. Shows its progress at the terminal. Main thread only.
#pragma once

#include <cstdint>
#include <span>

#include "hoxi/hoxi.h"

namespace scannerlink {

using PutFunction = HoxiResult (*)(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                                   uint32_t flags);
using GetFunction = HoxiResult (*)(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred,
                                   uint32_t* flags);

// The result of a call that succeeded and yet moved nothing, though more is to come, or claims to have moved more than
// was asked; and of one that was to move all at once and did not. The tester's own; the library has no such number.
inline constexpr uint32_t kTransferNotBelieved = 9108;

// Puts all of the data, the first block marked as the first and the last as the last. Returns the first failing result,
// 0 when everything has been taken.
HoxiResult putBlocks(PutFunction put, std::span<const uint8_t> data);

// Puts the data in one call that is first and last block at once.
HoxiResult putWhole(PutFunction put, std::span<const uint8_t> data);

// How far a transfer came: result is that of the last call, moved the bytes that arrived, lastBlock whether the last
// call was marked as the last block.
struct Moved {
    HoxiResult result = 0;
    uint64_t moved = 0;
    bool lastBlock = false;
};

// Gets blocks into the buffer until it is full, a block is marked as the last, or a call fails.
Moved getBlocks(GetFunction get, std::span<uint8_t> buffer);

}  // namespace scannerlink
