// Commands that ask the scanner about itself and what it holds.
#include <algorithm>

#include "hoxi/hoxi_codes.h"
#include "simulator/cameras.h"
#include "simulator/command_rows.h"
#include "simulator/image_quality.h"
#include "simulator/scanner.h"

namespace simulator {

namespace {

ReportWriter dataReport(const Request& request, uint32_t code) {
    return {code, hoxi::kComplete, request.packet.tag};
}

// A person presses the switch as soon as one touches the platen, unless the program asks for the present state.
Answer runQuerySwitch(const Request& request) {
    constexpr uint32_t kPresentState = 2;
    PayloadReader payload(request.packet.payload);
    const uint32_t mode = payload.u32();
    const uint64_t timeoutMs = payload.u32();
    payload.u32();
    if (payload.isMissing() || mode > kPresentState) {
        return answer(request.packet, kBadParameter);
    }
    const auto contactMs = static_cast<uint64_t>(request.scanner.plan().contactMs);
    const bool isPressed = mode != kPresentState && (timeoutMs == 0 || contactMs <= timeoutMs);
    Answer result =
        answerWithData(request.packet, ReportWriter(hoxi::CMD_QUERY_SWITCH, isPressed ? 1 : 0, request.packet.tag));
    if (mode != kPresentState) {
        result.reports[1].waitMs = isPressed ? contactMs : timeoutMs;
        result.reports[2].waitMs = result.reports[1].waitMs;
    }
    return result;
}

Answer runQueryCapture(const Request& request) {
    const CaptureDesk::Standing& standing = request.device.captureDesk.standing();
    ReportWriter report = dataReport(request, hoxi::STA_CAPTURE_STATE);
    report.u32(standing.tag).u32(standing.handle).u32(standing.scanType).u32(standing.progress);
    return answerWithData(request.packet, report);
}

// Repeats the command status of another command, under that command's tag.
Answer runQueryCommand(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t tag = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    const std::optional<int32_t> state = request.device.outbox.commandState(tag, request.nowMs);
    if (!state) {
        return answer(request.packet, kNoSuchThing);
    }
    return answerWithData(request.packet, ReportWriter(hoxi::STA_COMMAND, *state, tag));
}

Answer runQueryImageInfo(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const uint32_t scanType = payload.u32();
    const uint32_t imageType = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    const Image* const image = request.device.images.find({handle, scanType, imageType});
    if (image == nullptr) {
        return answer(request.packet, kNoSuchThing);
    }
    const ImageInfo& info = image->info;
    ReportWriter report = dataReport(request, hoxi::STA_IMAGE_INFO);
    report.u32(handle).u32(scanType).u32(imageType).u32(info.height).u32(info.width).u32(info.pitch);
    report.u32(info.depth).u32(info.vRes).u32(info.hRes);
    return answerWithData(request.packet, report);
}

Answer runQueryImageQuality(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const ImageKey key{handle, payload.u32(), kCapturedImage};
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    const Image* const image = request.device.images.find(key);
    if (image == nullptr) {
        return answer(request.packet, kNoSuchThing);
    }
    const CaptureQuality quality = measureCapture(image->info.pitch, request.device.images.pixels(key));
    ReportWriter report = dataReport(request, hoxi::STA_CAPTURE_QUAL);
    report.u32(handle).u32(key.scanType).u32(kCapturedImage);
    report.u16(quality.coverFactor).u16(static_cast<uint16_t>(std::min<uint32_t>(image->tookMs, 0xFFFF)));
    report.u16(quality.contactArea).u16(quality.goodArea).u16(quality.darkArea);
    report.u16(quality.lightArea).u16(quality.smearArea);
    return answerWithData(request.packet, report);
}

// One sub-assembly to each camera.
Answer runQueryScanners(const Request& request) {
    const ScannerPlan& plan = request.scanner.plan();
    ReportWriter report = dataReport(request, hoxi::STA_SUBASSEMBLIES);
    report.u32(kCameraCount);
    for (const Camera& camera : kCameras) {
        report.u8(static_cast<uint8_t>(camera.mask)).u8(1).u16(static_cast<uint16_t>(1000 + camera.mask));
        report.u16(static_cast<uint16_t>(plan.year));
        report.u8(static_cast<uint8_t>(plan.month)).u8(static_cast<uint8_t>(plan.day));
    }
    return answerWithData(request.packet, report);
}

Answer runQueryPreview(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const uint32_t scanType = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    const Image* const image = request.device.images.find({handle, scanType, kCapturedImage});
    if (image == nullptr) {
        return answer(request.packet, kNoSuchThing);
    }
    ReportWriter report = dataReport(request, hoxi::STA_PREV_INFO);
    report.u32(image->tag).u32(handle).u32(scanType);
    return answerWithData(request.packet, report);
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_QUERY_SWITCH, runQuerySwitch},           {hoxi::CMD_QUERY_CAPTURE, runQueryCapture},
    {hoxi::CMD_QUERY_COMMAND, runQueryCommand},         {hoxi::CMD_QUERY_IMAGE_INFO, runQueryImageInfo},
    {hoxi::CMD_QUERY_IMAGE_QUAL, runQueryImageQuality}, {hoxi::CMD_QUERY_SCANNERS, runQueryScanners},
    {hoxi::CMD_QUERY_PREV_INFO, runQueryPreview},
};

}  // namespace

std::span<const CommandRow> queryCommands() {
    return kRows;
}

}  // namespace simulator
