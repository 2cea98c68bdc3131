#include "simulator/data_channel.h"

#include <algorithm>
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/device.h"
#include "simulator/failure_states.h"
#include "simulator/results.h"

namespace simulator {

namespace {

constexpr uint32_t kTransferReady = 1;
// Type of a transfer in its reports.
constexpr uint32_t kToProgram = 1;
constexpr uint32_t kFromProgram = 2;

}  // namespace

Report readyReport(const DataOrder& order) {
    const uint32_t code = order.isBitmap ? hoxi::STA_BITMAP_XFER : hoxi::STA_MEMORY_XFER;
    ReportWriter report(code, hoxi::kComplete, order.tag);
    return report.u32(kTransferReady).u32(order.isToProgram ? kToProgram : kFromProgram).u32(0).u32(0).u32(0).report();
}

void DataChannel::open(DataOrder order, const Reply& reply, uint64_t readyMs) {
    current_ = Current{std::move(order), reply, readyMs};
}

BlockResult DataChannel::get(std::span<uint8_t> block, uint64_t nowMs, Device& device) {
    if (!isReady(true, nowMs)) {
        return {kNothingToTransfer};
    }
    const std::optional<TransferFault> fault = device.transferFaults.meant(get_);
    const std::span<uint8_t> moved = block.first(blockSize(block.size(), rest(), device.blockLimit, fault));
    std::copy_n(current_->order.bytes.begin() + static_cast<ptrdiff_t>(current_->position), moved.size(),
                moved.begin());
    corrupt(moved, fault);
    uint32_t flags = current_->blocks++ == 0 ? hoxi::kFirstTransfer : 0;
    current_->position += moved.size();
    if (rest() == 0) {
        flags |= hoxi::kLastTransfer;
        end(hoxi::kComplete, nowMs, device);
    }
    return resultOf(moved.size(), flags, fault);
}

BlockResult DataChannel::put(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs, Device& device) {
    if (!isReady(false, nowMs)) {
        return {kNothingToTransfer};
    }
    if (!fits(block, flags)) {
        end(kBadParameter, nowMs, device);
        return {kBadBlock};
    }
    const std::optional<TransferFault> fault = device.transferFaults.meant(put_);
    const size_t size = blockSize(block.size(), rest(), device.blockLimit, fault);
    std::vector<uint8_t>& bytes = current_->order.bytes;
    bytes.reserve(current_->order.byteCount);
    bytes.insert(bytes.end(), block.begin(), block.begin() + static_cast<ptrdiff_t>(size));
    corrupt(std::span(bytes).last(size), fault);
    current_->position += size;
    ++current_->blocks;
    // A block of which only the beginning was moved is not the last: its rest is still to come.
    const bool isLast = (flags & hoxi::kLastTransfer) != 0 && size == block.size();
    const bool isWhole = rest() == 0;
    if (isWhole != isLast) {
        end(kBadParameter, nowMs, device);
        return {kBadBlock};
    }
    if (isWhole) {
        current_->order.keep(device, std::move(bytes));
        end(hoxi::kComplete, nowMs, device);
    }
    return resultOf(size, 0, fault);
}

bool DataChannel::isReady(bool isToProgram, uint64_t nowMs) const {
    return current_ && current_->order.isToProgram == isToProgram &&
           (current_->order.isImmediate || nowMs >= current_->readyMs);
}

bool DataChannel::fits(std::span<const uint8_t> block, uint32_t flags) const {
    const bool isFirst = (flags & hoxi::kFirstTransfer) != 0;
    return isFirst == (current_->blocks == 0) && block.size() <= rest();
}

// The command has been pending all the while. Data that came early is complete no sooner than the scanner was ready.
void DataChannel::end(int32_t state, uint64_t nowMs, Device& device) {
    const DataOrder& order = current_->order;
    const uint64_t ms = std::max(nowMs, current_->readyMs) + device.latencyMs + order.recordMs;
    const Report command = ReportWriter(hoxi::STA_COMMAND, state, order.tag).report();
    device.outbox.say(current_->reply, Stage::Complete, command, ms);
    close();
}

}  // namespace simulator
