#include "simulator/transfer_block.h"

#include <algorithm>
#include <limits>

#include "hoxi/hoxi_codes.h"
#include "simulator/results.h"

namespace simulator {

size_t blockSize(size_t asked, size_t there, uint64_t limit, const std::optional<TransferFault>& fault) {
    size_t size = std::min(asked, there);
    size = static_cast<size_t>(std::min<uint64_t>(size, limit));
    if (fault && fault->move != kNotGiven) {
        size = std::min(size, static_cast<size_t>(fault->move));
    }
    return size;
}

void corrupt(std::span<uint8_t> block, const std::optional<TransferFault>& fault) {
    if (fault && fault->corrupt != kNotGiven && static_cast<uint64_t>(fault->corrupt) < block.size()) {
        block[static_cast<size_t>(fault->corrupt)] ^= 0xFF;
    }
}

BlockResult resultOf(size_t moved, uint32_t flags, const std::optional<TransferFault>& fault) {
    if (!fault) {
        return {kOk, static_cast<uint32_t>(moved), flags};
    }
    constexpr uint64_t kMost = std::numeric_limits<uint32_t>::max();
    const uint64_t claimed = std::min(moved + static_cast<uint64_t>(fault->claimMore), kMost);
    if (fault->lastFlag == static_cast<int64_t>(LastFlag::Set)) {
        flags |= hoxi::kLastTransfer;
    } else if (fault->lastFlag == static_cast<int64_t>(LastFlag::Clear)) {
        flags &= ~hoxi::kLastTransfer;
    }
    return {static_cast<HoxiResult>(fault->result), static_cast<uint32_t>(claimed), flags};
}

}  // namespace simulator
