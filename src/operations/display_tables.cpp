#include "operations/display_tables.h"

#include <algorithm>

namespace operations {
namespace {

uint8_t spread(uint32_t level, uint32_t range) {
    return static_cast<uint8_t>((level * range) >> 8);
}

}  // namespace

MapTable remoteMap(uint32_t range) {
    MapTable map;
    for (uint32_t level = 0; level < kMapSize; ++level)
        map[level] = spread(level, range);
    return map;
}

LocalMaps localMaps(uint32_t firstNormal, uint32_t normalCount, uint32_t firstQuality, uint32_t qualityCount) {
    LocalMaps maps;
    for (uint32_t level = 0; level < kMapSize; ++level) {
        maps.normal[level] = static_cast<uint8_t>(firstNormal + spread(level, normalCount));
        const bool odd = level % 2 == 1;
        maps.quality[level] =
            odd ? static_cast<uint8_t>(firstQuality + spread(level, qualityCount)) : maps.normal[level];
    }
    return maps;
}

uint32_t paletteEntry(uint32_t index, uint32_t red, uint32_t green, uint32_t blue) {
    return index << 24 | (red & 0xFF) << 16 | (green & 0xFF) << 8 | (blue & 0xFF);
}

std::vector<uint32_t> bitmapPalette(std::span<const uint32_t, 256> colors) {
    std::vector<uint32_t> entries(kBitmapPaletteEntries);
    for (uint32_t i = 0; i < kBitmapPaletteEntries; ++i)
        entries[i] = i << 24 | (colors[i + 1 < kBitmapPaletteEntries ? 2 * i : 255] & 0xFFFFFF);
    return entries;
}

void halvePixels(std::span<uint8_t> pixels) {
    for (uint8_t& pixel : pixels)
        pixel >>= 1;
}

void reverseRows(std::span<uint8_t> pixels, size_t width, size_t height) {
    for (size_t row = 0; row < height / 2; ++row) {
        uint8_t* upper = pixels.data() + row * width;
        std::swap_ranges(upper, upper + width, pixels.data() + (height - 1 - row) * width);
    }
}

}  // namespace operations
