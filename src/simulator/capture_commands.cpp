// Commands that make the scanner look: captures, calibration and check grabs, and what steers them.
#include <algorithm>
#include <limits>

#include "hoxi/hoxi_codes.h"
#include "simulator/cameras.h"
#include "simulator/command_rows.h"
#include "simulator/scanner.h"

namespace simulator {

namespace {

constexpr uint32_t kDarkGrab = 8;  // in the mode of a calibration grab: with the light off

uint32_t scaled(int64_t size, uint32_t resolution, int64_t planned) {
    const int64_t pixels = size * resolution / planned;
    return static_cast<uint32_t>(std::min<int64_t>(pixels, std::numeric_limits<uint32_t>::max()));
}

// The image that a camera is about to take: its measures, and what it will be drawn from.
Image imageOf(const Request& request, size_t camera, PictureKind picture, uint32_t handle) {
    const ScannerPlan& plan = request.scanner.plan();
    const uint32_t resolution = request.device.resolutions[camera];
    Image image;
    image.info.width = scaled(plan.*kCameras[camera].width, resolution, plan.resolution);
    image.info.height = scaled(plan.*kCameras[camera].height, resolution, plan.resolution);
    image.info.pitch = image.info.width;
    image.info.vRes = resolution;
    image.info.hRes = resolution;
    image.scene = Scene{picture, request.device.nextSeed(handle), resolution};
    image.tag = request.packet.tag;
    image.tookMs = static_cast<uint32_t>(plan.captureMs);
    return image;
}

Answer begin(const Request& request, CaptureOrder order) {
    order.tag = request.packet.tag;
    order.captureMs = static_cast<uint64_t>(request.scanner.plan().captureMs);
    return {{pending(request.packet)}, std::move(order)};
}

// A person's finger, slap, palm or hand: handle, scan type and scan mode. The image is kept by handle and scan type.
Answer capture(const Request& request, size_t camera) {
    PayloadReader payload(request.packet.payload);
    const ImageKey key{payload.u32(), payload.u32(), kCapturedImage};
    payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    if (request.device.captureDesk.isBusy()) {
        return answer(request.packet, kBusy);
    }
    CaptureOrder order;
    order.key = key;
    order.image = imageOf(request, camera, kCameras[camera].picture, key.handle);
    order.contactMs = static_cast<uint64_t>(request.scanner.plan().contactMs);
    return begin(request, std::move(order));
}

// A look at the empty platen: handle, scan mode and number of frames.
Answer grab(const Request& request, size_t camera, CapturePurpose purpose, uint32_t qualityStatus) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const uint32_t mode = payload.u32();
    payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    if (request.device.captureDesk.isBusy()) {
        return answer(request.packet, kBusy);
    }
    CaptureOrder order;
    order.key = {handle, kCameras[camera].scanType, kCapturedImage};
    order.purpose = purpose;
    order.camera = camera;
    order.isDark = (mode & kDarkGrab) != 0;
    order.qualityStatus = qualityStatus;
    order.image = imageOf(request, camera, order.isDark ? PictureKind::Dark : PictureKind::Flat, handle);
    return begin(request, std::move(order));
}

template <size_t camera>
Answer runCapture(const Request& request) {
    return capture(request, camera);
}

template <size_t camera>
Answer runCalibrate(const Request& request) {
    return grab(request, camera, CapturePurpose::Reference, 0);
}

template <size_t camera, uint32_t qualityStatus>
Answer runCheck(const Request& request) {
    return grab(request, camera, CapturePurpose::Check, qualityStatus);
}

Answer runStop(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t choice = payload.u32();
    if (payload.isMissing() || choice > static_cast<uint32_t>(CaptureKey::Save)) {
        return answer(request.packet, kBadParameter);
    }
    return {answer(request.packet, hoxi::kComplete).reports, CaptureStop{static_cast<CaptureKey>(choice)}};
}

// Ends the capture of this image with what there is. When it has ended by itself there is nothing left to do.
Answer runFinish(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const uint32_t scanType = payload.u32();
    payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    if (request.device.captureDesk.isBusyWith(handle, scanType)) {
        return {answer(request.packet, hoxi::kComplete).reports, CaptureStop{CaptureKey::Save}};
    }
    const bool isThere = request.device.images.find({handle, scanType, kCapturedImage}) != nullptr;
    return answer(request.packet, isThere ? hoxi::kComplete : kNoSuchThing);
}

Answer runReinit(const Request& request) {
    return {answer(request.packet, hoxi::kComplete).reports, CaptureStop{CaptureKey::Abort}};
}

// Cameras by mask, unit and number: 0 or 1 is pixels per inch, 2 pixels per centimetre.
Answer runSetResolution(const Request& request) {
    constexpr uint32_t kAllCameras = (1U << kCameraCount) - 1;
    constexpr uint64_t kLeast = 50;
    constexpr uint64_t kMost = 1200;
    PayloadReader payload(request.packet.payload);
    const uint32_t cameras = payload.u32();
    const uint32_t unit = payload.u32();
    const uint64_t number = payload.u32();
    const uint64_t perInch = unit == 2 ? number * 254 / 100 : number;
    if (payload.isMissing() || cameras == 0 || cameras > kAllCameras || unit > 2 || perInch < kLeast ||
        perInch > kMost) {
        return answer(request.packet, kBadParameter);
    }
    for (size_t i = 0; i < kCameraCount; ++i) {
        if ((cameras & kCameras[i].mask) != 0) {
            request.device.resolutions[i] = static_cast<uint32_t>(perInch);
        }
    }
    return answer(request.packet, hoxi::kComplete);
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_CALIB_FINGER, runCalibrate<kFingerCamera>},
    {hoxi::CMD_CHECK_PLATEN, runCheck<kFingerCamera, hoxi::STA_PLATEN_QUAL>},
    {hoxi::CMD_CALIB_HAND, runCalibrate<kHandCamera>},
    {hoxi::CMD_CHECK_ROLLER, runCheck<kHandCamera, hoxi::STA_ROLLER_QUAL>},
    {hoxi::CMD_CALIB_SLAP, runCalibrate<kSlapCamera>},
    {hoxi::CMD_CHECK_FLAT, runCheck<kSlapCamera, hoxi::STA_FLAT_QUAL>},
    {hoxi::CMD_CALIB_PALM, runCalibrate<kPalmCamera>},
    {hoxi::CMD_SET_RESOLUTION, runSetResolution},
    {hoxi::CMD_CAPTURE_FINGER, runCapture<kFingerCamera>},
    {hoxi::CMD_CAPTURE_HAND, runCapture<kHandCamera>},
    {hoxi::CMD_STOP_CAPTURE, runStop},
    {hoxi::CMD_CAPTURE_SLAP, runCapture<kSlapCamera>},
    {hoxi::CMD_CAPTURE_PALM, runCapture<kPalmCamera>},
    {hoxi::CMD_FINISH_FINGER, runFinish},
    {hoxi::CMD_FINISH_SLAP, runFinish},
    {hoxi::CMD_REINIT_CAPTURE_TASK, runReinit},
};

}  // namespace

std::span<const CommandRow> captureCommands() {
    return kRows;
}

}  // namespace simulator
