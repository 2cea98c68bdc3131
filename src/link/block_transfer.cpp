#include "link/block_transfer.h"

#include <algorithm>
#include <limits>

#include "console/progress.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"

namespace scannerlink {
namespace {

struct Step {
    HoxiResult result;
    uint32_t moved;
    bool lastBlock;
};

uint64_t blockSize() {
    return std::min<uint64_t>(state.bufferSizes[state.currentScanner].data, std::numeric_limits<uint32_t>::max());
}

// What to make of a call that was asked to move so many bytes.
Step believed(HoxiResult result, uint32_t asked, uint32_t moved, bool lastBlock) {
    if (moved > asked)
        return {result != 0 ? result : kTransferNotBelieved, 0, lastBlock};
    if (result == 0 && moved == 0 && (asked == 0 || !lastBlock))
        return {kTransferNotBelieved, 0, lastBlock};
    return {result, moved, lastBlock};
}

// Moves size bytes block by block; move(offset, count) makes one call.
template <typename Move>
Moved moveBlocks(uint64_t size, Move move) {
    Moved received;
    uint64_t block = blockSize();
    console::Progress progress(size);
    while (received.moved < size) {
        block = std::min(block, size - received.moved);
        const Step step = move(received.moved, static_cast<uint32_t>(block));
        received.moved += step.moved;
        received.result = step.result;
        received.lastBlock = step.lastBlock;
        if (step.result != 0 || step.lastBlock)
            break;
        progress.update(received.moved);
    }
    return received;
}

}  // namespace

HoxiResult putBlocks(PutFunction put, std::span<const uint8_t> data) {
    const Moved sent = moveBlocks(data.size(), [&](uint64_t offset, uint32_t count) {
        const uint32_t flags =
            (offset == 0 ? hoxi::kFirstTransfer : 0) | (offset + count == data.size() ? hoxi::kLastTransfer : 0);
        uint32_t moved = 0;
        const HoxiResult result = put(state.currentScanner, data.data() + offset, count, &moved, flags);
        return believed(result, count, moved, false);
    });
    return sent.result;
}

HoxiResult putWhole(PutFunction put, std::span<const uint8_t> data) {
    uint32_t moved = 0;
    const HoxiResult result = put(state.currentScanner, data.data(), static_cast<uint32_t>(data.size()), &moved,
                                  hoxi::kFirstTransfer | hoxi::kLastTransfer);
    return result == 0 && moved != data.size() ? kTransferNotBelieved : result;
}

Moved getBlocks(GetFunction get, std::span<uint8_t> buffer) {
    return moveBlocks(buffer.size(), [&](uint64_t offset, uint32_t count) {
        uint32_t moved = 0;
        uint32_t flags = 0;
        const HoxiResult result = get(state.currentScanner, buffer.data() + offset, count, &moved, &flags);
        return believed(result, count, moved, (flags & hoxi::kLastTransfer) != 0);
    });
}

}  // namespace scannerlink
