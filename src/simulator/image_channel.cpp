#include "simulator/image_channel.h"

#include <algorithm>
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/device.h"
#include "simulator/results.h"

namespace simulator {

namespace {

// State of a transfer in its reports.
constexpr uint32_t kTransferReady = 1;
constexpr uint32_t kTransferDone = 5;
constexpr uint32_t kToProgram = 1;  // type of a transfer in its reports

}  // namespace

void ImageChannel::open(TransferOrder order, const Reply& reply, uint64_t readyMs, Device& device) {
    current_ = Current{std::move(order), reply, readyMs};
    if (current_->order.isToProgram) {
        say(Stage::Ready, kTransferReady, readyMs, device);
    }
}

BlockResult ImageChannel::get(std::span<uint8_t> block, uint64_t nowMs, Device& device) {
    if (!isReady(true, nowMs)) {
        return {kNothingToTransfer};
    }
    const std::optional<TransferFault> fault = device.transferFaults.meant(Function::GetImage);
    const std::span<uint8_t> source = rest();
    const std::span<uint8_t> moved = block.first(blockSize(block.size(), source.size(), device.blockLimit, fault));
    std::copy_n(source.begin(), moved.size(), moved.begin());
    corrupt(moved, fault);
    uint32_t flags = current_->blocks++ == 0 ? hoxi::kFirstTransfer : 0;
    current_->position += moved.size();
    if (rest().empty()) {
        flags |= hoxi::kLastTransfer;
        finishSending(nowMs, device);
    }
    return resultOf(moved.size(), flags, fault);
}

BlockResult ImageChannel::put(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs, Device& device) {
    if (!isReady(false, nowMs)) {
        return {kNothingToTransfer};
    }
    if (!fits(block, flags)) {
        close();
        return {kBadBlock};
    }
    const std::optional<TransferFault> fault = device.transferFaults.meant(Function::PutImage);
    const std::span<uint8_t> target = rest().first(blockSize(block.size(), rest().size(), device.blockLimit, fault));
    std::copy_n(block.begin(), target.size(), target.begin());
    corrupt(target, fault);
    current_->position += target.size();
    ++current_->blocks;
    // A block of which only the beginning was moved is not the last: its rest is still to come.
    const bool isLast = (flags & hoxi::kLastTransfer) != 0 && target.size() == block.size();
    if (!receive(isLast, device)) {
        return {kBadBlock};
    }
    return resultOf(target.size(), 0, fault);
}

bool ImageChannel::isReady(bool isToProgram, uint64_t nowMs) const {
    return current_ && current_->order.isToProgram == isToProgram && nowMs >= current_->readyMs;
}

std::span<uint8_t> ImageChannel::rest() {
    return std::span(current_->order.image.pixels).subspan(current_->position);
}

void ImageChannel::say(Stage stage, uint32_t transferState, uint64_t ms, Device& device) {
    const TransferOrder& order = current_->order;
    ReportWriter report(hoxi::STA_IMAGE_XFER, hoxi::kComplete, order.tag);
    report.u32(transferState).u32(kToProgram).u32(0);
    report.u32(order.key.handle).u32(order.key.scanType).u32(order.key.imageType);
    report.u32(current_->blocks).u32(static_cast<uint32_t>(current_->position));
    device.outbox.say(current_->reply, stage, report.report(), ms);
}

// The command has been complete when the transfer began; it is once more now that the transfer is over.
void ImageChannel::finishSending(uint64_t nowMs, Device& device) {
    const uint64_t ms = nowMs + device.latencyMs;
    say(Stage::Done, kTransferDone, ms, device);
    const Report command = ReportWriter(hoxi::STA_COMMAND, hoxi::kComplete, current_->order.tag).report();
    device.outbox.say(current_->reply, Stage::Complete, command, ms);
    close();
}

bool ImageChannel::fits(std::span<const uint8_t> block, uint32_t flags) const {
    const bool isFirst = (flags & hoxi::kFirstTransfer) != 0;
    const size_t there = current_->order.image.pixels.size() - current_->position;
    return isFirst == (current_->blocks == 0) && block.size() <= there;
}

// Keeps the image when it is all there. False when it ends too early or does not end.
bool ImageChannel::receive(bool isLast, Device& device) {
    const bool isWhole = rest().empty();
    if (!isWhole && !isLast) {
        return true;
    }
    TransferOrder order = std::move(current_->order);
    close();
    return isWhole && isLast && device.images.put(order.key, std::move(order.image));
}

}  // namespace simulator
