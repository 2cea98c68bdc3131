// Commands on the local display and on the display area of the host.
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/command_rows.h"

namespace simulator {

namespace {

constexpr size_t kMapSize = std::tuple_size_v<GrayMap>;

Area readArea(PayloadReader& payload) {
    Area area;
    area.x = payload.u32();
    area.y = payload.u32();
    area.width = payload.u32();
    area.height = payload.u32();
    return area;
}

// Nothing when the command has no such word, or one that is larger.
std::optional<uint32_t> onlyWord(const Request& request, uint32_t most) {
    PayloadReader payload(request.packet.payload);
    const uint32_t word = payload.u32();
    return payload.isMissing() || word > most ? std::nullopt : std::optional(word);
}

Answer endedAs(const Request& request, bool isGood) {
    return answer(request.packet, isGood ? hoxi::kComplete : kBadParameter);
}

Answer runConfigLocal(const Request& request) {
    const auto mode = onlyWord(request, 1);
    if (mode) {
        request.device.display.turn(*mode == 1);
    }
    return endedAs(request, mode.has_value());
}

Answer runFill(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const Area area = readArea(payload);
    const uint32_t pixel = payload.u32();
    if (!payload.isMissing()) {
        request.device.display.fill(area, static_cast<uint8_t>(pixel));
    }
    return endedAs(request, !payload.isMissing());
}

// The program puts the bitmap right behind the command.
Answer runWrite(const Request& request) {
    constexpr uint64_t kMostPixels = 0x800'0000;
    PayloadReader payload(request.packet.payload);
    const Area area = readArea(payload);
    const uint64_t count = uint64_t{area.width} * area.height;
    if (payload.isMissing() || count == 0) {
        return answer(request.packet, kBadParameter);
    }
    if (count > kMostPixels) {
        return answer(request.packet, kNoMemory);
    }
    DataOrder order;
    order.isBitmap = true;
    order.isImmediate = true;
    order.byteCount = static_cast<size_t>(count);
    order.keep = [area](Device& device, const std::vector<uint8_t>& bytes) { device.display.writeBitmap(area, bytes); };
    return answerWithTransfer(request.packet, std::move(order));
}

Answer runControlLocalImage(const Request& request) {
    const auto mode = onlyWord(request, 1);
    if (mode) {
        request.device.display.showsImages = *mode == 1;
    }
    return endedAs(request, mode.has_value());
}

Answer runConfigLocalImage(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const Area area = readArea(payload);
    if (!payload.isMissing()) {
        request.device.display.imageArea = area;
    }
    return endedAs(request, !payload.isMissing());
}

Answer runConfigOverlay(const Request& request) {
    const auto color = onlyWord(request, 255);
    if (color) {
        request.device.display.overlayColor = *color;
    }
    return endedAs(request, color.has_value());
}

// Entries of four bytes: blue, green, red, index. Some programs wait until the scanner is ready, others do not.
Answer runConfigPalette(const Request& request) {
    const auto count = onlyWord(request, 256);
    if (!count || *count == 0) {
        return answer(request.packet, kBadParameter);
    }
    DataOrder order;
    order.isImmediate = true;
    order.byteCount = size_t{*count} * 4;
    order.keep = [](Device& device, const std::vector<uint8_t>& bytes) {
        PayloadReader entries(bytes);
        for (size_t i = 0; i < bytes.size() / 4; ++i) {
            const uint32_t entry = entries.u32();
            device.display.setPaletteEntry(static_cast<uint8_t>(entry >> 24), entry);
        }
    };
    return answerWithTransfer(request.packet, std::move(order));
}

// The program puts a table of so many bytes right behind the command, and expects no word of it.
Answer awaitTable(const Request& request, size_t byteCount, void (*keep)(Device&, const std::vector<uint8_t>&)) {
    DataOrder order;
    order.isConfirmed = false;
    order.isImmediate = true;
    order.byteCount = byteCount;
    order.keep = keep;
    return answerWithTransfer(request.packet, std::move(order));
}

Answer runConfigLocalMap(const Request& request) {
    return awaitTable(request, 2 * kMapSize, [](Device& device, const std::vector<uint8_t>& bytes) {
        std::copy_n(bytes.begin(), kMapSize, device.display.normalMap.begin());
        std::copy_n(bytes.begin() + kMapSize, kMapSize, device.display.qualityMap.begin());
    });
}

Answer runConfigRemoteMap(const Request& request) {
    return awaitTable(request, kMapSize, [](Device& device, const std::vector<uint8_t>& bytes) {
        GrayMap map{};
        std::copy_n(bytes.begin(), kMapSize, map.begin());
        device.remoteDisplay.setMap(map);
    });
}

Answer runConfigRemoteImage(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t width = payload.u32();
    const uint32_t height = payload.u32();
    if (!payload.isMissing()) {
        request.device.remoteDisplay.width = width;
        request.device.remoteDisplay.height = height;
    }
    return endedAs(request, !payload.isMissing());
}

Answer runControlRemoteImage(const Request& request) {
    const auto mode = onlyWord(request, 1);
    if (mode) {
        request.device.remoteDisplay.isOn = *mode == 1;
    }
    return endedAs(request, mode.has_value());
}

Answer runConfigRemoteBand(const Request& request) {
    const auto lines = onlyWord(request, 0xFFFFFFFF);
    if (lines) {
        request.device.remoteDisplay.bandLines = *lines;
    }
    return endedAs(request, lines.has_value());
}

// The gray levels up to white are spread over all levels, then go through the map.
GrayMap stretched(const GrayMap& map, uint32_t white) {
    GrayMap result = map;
    if (white == 0 || white > 255) {
        return result;
    }
    for (uint32_t level = 0; level < result.size(); ++level) {
        result[level] = map[std::min(level, white) * 255 / white];
    }
    return result;
}

Answer runDisplayImage(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t handle = payload.u32();
    const uint32_t scanType = payload.u32();
    const ImageKey key{handle, scanType, payload.u32()};
    payload.u32();
    const bool isReview = payload.u32() != 0;
    const uint32_t offset = payload.u32();
    const uint32_t white = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    const Image* const image = request.device.images.find(key);
    if (image == nullptr) {
        return answer(request.packet, kNoSuchThing);
    }
    const ImageInfo& info = image->info;
    const std::span<const uint8_t> pixels = request.device.images.pixels(key);
    LocalDisplay& display = request.device.display;
    if (!pixels.empty()) {
        const GrayMap& map = isReview ? display.qualityMap : display.normalMap;
        display.showImage({pixels, info.width, info.height, info.pitch}, stretched(map, white), offset);
    }
    return answer(request.packet, hoxi::kComplete);
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_DISPLAY_IMAGE, runDisplayImage},
    {hoxi::CMD_CONFIG_REMOTE_IMAGE, runConfigRemoteImage},
    {hoxi::CMD_CONTROL_REMOTE_IMAGE, runControlRemoteImage},
    {hoxi::CMD_CONFIG_REMOTE_MAP, runConfigRemoteMap},
    {hoxi::CMD_CONFIG_REMOTE_BAND, runConfigRemoteBand},
    {hoxi::CMD_CONFIG_LOCAL_DISPLAY, runConfigLocal},
    {hoxi::CMD_FILL_LOCAL_DISPLAY, runFill},
    {hoxi::CMD_WRITE_LOCAL_DISPLAY, runWrite},
    {hoxi::CMD_CONTROL_LOCAL_IMAGE, runControlLocalImage},
    {hoxi::CMD_CONFIG_LOCAL_PALETTE, runConfigPalette},
    {hoxi::CMD_CONFIG_LOCAL_MAP, runConfigLocalMap},
    {hoxi::CMD_CONFIG_LOCAL_IMAGE, runConfigLocalImage},
    {hoxi::CMD_CONFIG_LOCAL_OVERLAY, runConfigOverlay},
};

}  // namespace

std::span<const CommandRow> displayCommands() {
    return kRows;
}

}  // namespace simulator
