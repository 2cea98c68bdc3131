// Commands on the images that the scanner holds: fetch, load, free, and the references of its cameras.
#include "hoxi/hoxi_codes.h"
#include "simulator/cameras.h"
#include "simulator/command_rows.h"

namespace simulator {

namespace {

ImageKey readKey(PayloadReader& payload) {
    const uint32_t handle = payload.u32();
    const uint32_t scanType = payload.u32();
    return {handle, scanType, payload.u32()};
}

// The program says how many bytes it awaits; it must be the whole image.
Answer runSendImage(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const ImageKey key = readKey(payload);
    const uint64_t byteCount = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    if (request.device.images.find(key) == nullptr) {
        return answer(request.packet, kNoSuchThing);
    }
    const std::span<const uint8_t> pixels = request.device.images.pixels(key);
    if (pixels.empty() || pixels.size() != byteCount) {
        return answer(request.packet, kBadParameter);
    }
    TransferOrder order{request.packet.tag, key, true, {}};
    order.image.pixels.assign(pixels.begin(), pixels.end());
    return {answer(request.packet, hoxi::kComplete).reports, std::move(order)};
}

Answer runReceiveImage(const Request& request) {
    PayloadReader payload(request.packet.payload);
    TransferOrder order{request.packet.tag, readKey(payload), false, {}};
    ImageInfo& info = order.image.info;
    info.height = payload.u32();
    info.width = payload.u32();
    info.pitch = payload.u32();
    info.vRes = payload.u32();
    info.hRes = payload.u32();
    const uint64_t byteCount = payload.u32();
    order.image.tag = request.packet.tag;
    if (payload.isMissing() || info.width == 0 || info.pitch < info.width || byteCount == 0 ||
        byteCount != info.byteCount()) {
        return answer(request.packet, kBadParameter);
    }
    if (!request.device.images.hasRoom(order.key, byteCount)) {
        return answer(request.packet, kNoMemory);
    }
    order.image.pixels.resize(static_cast<size_t>(byteCount));
    return {answer(request.packet, hoxi::kComplete).reports, std::move(order)};
}

Answer runFreeImage(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const ImageKey key = readKey(payload);
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    return answer(request.packet, request.device.images.erase(key) ? hoxi::kComplete : kNoSuchThing);
}

std::optional<Image>& referenceOf(const Request& request, size_t camera, uint32_t imageType) {
    Reference& reference = request.device.references[camera];
    return imageType == kDarkImage ? reference.dark : reference.equal;
}

// Between a camera's reference and the image of the handle, of the camera's own scan type.
Answer copyReference(const Request& request, uint32_t imageType, bool isToImage) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const std::optional<size_t> camera = cameraOf(payload.u32());
    if (payload.isMissing() || !camera) {
        return answer(request.packet, kBadParameter);
    }
    const ImageKey key{handle, kCameras[*camera].scanType, imageType};
    std::optional<Image>& reference = referenceOf(request, *camera, imageType);
    if (isToImage) {
        if (!reference) {
            return answer(request.packet, kNoSuchThing);
        }
        return answer(request.packet, request.device.images.put(key, *reference) ? hoxi::kComplete : kNoMemory);
    }
    const Image* const image = request.device.images.find(key);
    if (image == nullptr) {
        return answer(request.packet, kNoSuchThing);
    }
    reference = *image;
    return answer(request.packet, hoxi::kComplete);
}

template <uint32_t imageType, bool isToImage>
Answer runCopyReference(const Request& request) {
    return copyReference(request, imageType, isToImage);
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_SEND_IMAGE, runSendImage},
    {hoxi::CMD_RECV_IMAGE, runReceiveImage},
    {hoxi::CMD_FREE_IMAGE, runFreeImage},
    {hoxi::CMD_GET_DRK_IMAGE, runCopyReference<kDarkImage, true>},
    {hoxi::CMD_SET_DRK_IMAGE, runCopyReference<kDarkImage, false>},
    {hoxi::CMD_GET_EQU_IMAGE, runCopyReference<kEqualImage, true>},
    {hoxi::CMD_SET_EQU_IMAGE, runCopyReference<kEqualImage, false>},
};

}  // namespace

std::span<const CommandRow> imageCommands() {
    return kRows;
}

}  // namespace simulator
