#include "simulator/local_display.h"

#include <algorithm>
#include <numeric>

namespace simulator {

namespace {

// The part of a length from a place on that lies within the display.
uint64_t within(uint32_t from, uint64_t length, uint32_t limit) {
    return from >= limit ? 0 : std::min<uint64_t>(length, limit - from);
}

uint64_t dividedUp(uint64_t value, uint64_t by) {
    return (value + by - 1) / by;
}

}  // namespace

GrayMap identityMap() {
    GrayMap map{};
    std::iota(map.begin(), map.end(), uint8_t{0});
    return map;
}

LocalDisplay::LocalDisplay() : pixels_(size_t{kDisplayWidth} * kDisplayHeight) {
    for (uint32_t i = 0; i < palette_.size(); ++i) {
        palette_[i] = i * 0x010101;
    }
}

void LocalDisplay::turn(bool isOn) {
    isOn_ = isOn;
    isChanged_ = true;
}

void LocalDisplay::setPaletteEntry(uint8_t index, uint32_t color) {
    palette_[index] = color & 0xFFFFFF;
    isChanged_ = true;
}

void LocalDisplay::fill(const Area& area, uint8_t pixel) {
    const uint64_t width = within(area.x, area.width, kDisplayWidth);
    const uint64_t height = within(area.y, area.height, kDisplayHeight);
    for (uint64_t y = 0; y < height; ++y) {
        for (uint64_t x = 0; x < width; ++x) {
            set(area.x + x, area.y + y, pixel);
        }
    }
    isChanged_ = true;
}

void LocalDisplay::writeBitmap(const Area& area, std::span<const uint8_t> pixels) {
    const uint64_t width = within(area.x, area.width, kDisplayWidth);
    const uint64_t height = within(area.y, area.height, kDisplayHeight);
    for (uint64_t y = 0; y < height; ++y) {
        const uint64_t line = area.height - 1 - y;
        for (uint64_t x = 0; x < width; ++x) {
            set(area.x + x, area.y + y, pixels[static_cast<size_t>(line * area.width + x)]);
        }
    }
    isChanged_ = true;
}

void LocalDisplay::showImage(const Picture& picture, const GrayMap& map, uint32_t firstLine) {
    const Area& area = imageArea;
    const uint64_t mostWidth = within(area.x, area.width, kDisplayWidth);
    const uint64_t areaHeight = within(area.y, area.height, kDisplayHeight);
    if (!showsImages || mostWidth == 0 || areaHeight <= firstLine) {
        return;
    }
    const uint64_t mostHeight = areaHeight - firstLine;
    const uint64_t step =
        std::max({uint64_t{1}, dividedUp(picture.width, mostWidth), dividedUp(picture.height, mostHeight)});
    for (uint64_t y = 0; y * step < picture.height; ++y) {
        for (uint64_t x = 0; x * step < picture.width; ++x) {
            const uint8_t pixel = picture.pixels[static_cast<size_t>(y * step * picture.pitch + x * step)];
            set(area.x + x, uint64_t{area.y} + firstLine + y, map[pixel]);
        }
    }
    isChanged_ = true;
}

void RemoteDisplay::setMap(const GrayMap& map) {
    map_ = map;
    isChanged_ = true;
}

void LocalDisplay::set(uint64_t x, uint64_t y, uint8_t pixel) {
    pixels_[static_cast<size_t>(y * kDisplayWidth + x)] = pixel;
}

}  // namespace simulator
