#include "simulator/capture_desk.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/device.h"
#include "simulator/failure_states.h"
#include "simulator/image_quality.h"

namespace simulator {

namespace {

struct Step {
    uint32_t progress;
    bool isOfPerson;  // left out when the scanner looks at the empty platen
    bool isBeforeContact;
    uint64_t quarters;  // of the time from contact to the end
};

constexpr Step kSteps[] = {
    {kCaptureStarted, false, true, 0},   {kAwaitingContact, true, true, 0}, {kContact, true, false, 0},
    {kScanning, false, false, 1},        {kAcquired, false, false, 2},      {kProcessing, false, false, 3},
    {kCaptureComplete, false, false, 4},
};

// Puts the image where its purpose has it. False when there is no room.
bool keepImage(CaptureOrder& order, Device& device) {
    if (order.purpose != CapturePurpose::Reference) {
        return device.images.put(order.key, std::move(order.image));
    }
    Reference& reference = device.references[order.camera];
    (order.isDark ? reference.dark : reference.equal) = std::move(order.image);
    return true;
}

Report platenReport(const CaptureOrder& order, Device& device) {
    const PlatenQuality quality = measurePlaten(device.images.pixels(order.key));
    ReportWriter report(order.qualityStatus, hoxi::kComplete, order.tag);
    report.u32(order.tag).u32(order.key.handle).u32(order.key.scanType);
    report.u32(quality.totalPixels).u32(quality.dirtyPixels).u32(quality.damagedPixels).u32(quality.peakLevel);
    return report.report();
}

}  // namespace

bool CaptureDesk::isBusyWith(uint32_t handle, uint32_t scanType) const {
    return current_ && current_->order.key.handle == handle && current_->order.key.scanType == scanType;
}

void CaptureDesk::begin(CaptureOrder order, const Reply& reply, uint64_t startMs) {
    standing_ = {order.tag, order.key.handle, order.key.scanType, kNoCapture};
    const uint64_t contactMs = startMs + order.contactMs;
    current_ = Current{std::move(order), reply, startMs, contactMs, kNever};
}

void CaptureDesk::press(CaptureKey key, uint64_t ms, Device& device) {
    if (!current_) {
        return;
    }
    if (key == CaptureKey::Abort) {
        return end(kCaptureAborted, kAborted, ms, device);
    }
    current_->contactMs = std::min(current_->contactMs, std::max(ms, current_->startMs));
    if (key == CaptureKey::Save) {
        current_->latestMs = std::max(ms, current_->startMs);
    }
}

uint64_t CaptureDesk::nextMs() const {
    return current_ ? dueMs(current_->step) : kNever;
}

void CaptureDesk::advance(uint64_t nowMs, Device& device) {
    while (nextMs() <= nowMs) {
        const uint64_t ms = nextMs();
        const Step& step = kSteps[current_->step++];
        if (step.progress == kCaptureComplete) {
            finish(ms, device);
        } else if (!step.isOfPerson || current_->order.purpose == CapturePurpose::Picture) {
            report(step.progress, ms, device);
        }
    }
}

void CaptureDesk::clear() {
    current_.reset();
    standing_ = {};
}

uint64_t CaptureDesk::dueMs(size_t step) const {
    const uint64_t begins = kSteps[step].isBeforeContact ? current_->startMs : current_->contactMs;
    return std::min(begins + current_->order.captureMs * kSteps[step].quarters / 4, current_->latestMs);
}

void CaptureDesk::report(uint32_t progress, uint64_t ms, Device& device) {
    standing_.progress = progress;
    const int32_t state = progress == kCaptureComplete  ? hoxi::kComplete
                          : progress > kCaptureComplete ? (progress == kCaptureAborted ? kAborted : kNoMemory)
                                                        : hoxi::kInProgress;
    ReportWriter writer(hoxi::STA_CAPTURE_PROGRESS, state, standing_.tag);
    writer.u32(standing_.tag).u32(standing_.handle).u32(standing_.scanType).u32(progress);
    device.outbox.say(current_->reply, Stage::Progress, writer.report(), ms);
}

// The image is there before anybody can hear of it, and the command is complete behind the last of the progress.
void CaptureDesk::finish(uint64_t ms, Device& device) {
    CaptureOrder& order = current_->order;
    if (!keepImage(order, device)) {
        return end(kCaptureFailed, kNoMemory, ms, device);
    }
    if (order.purpose == CapturePurpose::Check) {
        device.outbox.say(current_->reply, Stage::Data, platenReport(order, device), ms);
    }
    end(kCaptureComplete, hoxi::kComplete, ms, device);
}

void CaptureDesk::end(uint32_t progress, int32_t state, uint64_t ms, Device& device) {
    report(progress, ms, device);
    const Report command = ReportWriter(hoxi::STA_COMMAND, state, standing_.tag).report();
    device.outbox.say(current_->reply, Stage::Complete, command, ms);
    current_.reset();
}

}  // namespace simulator
