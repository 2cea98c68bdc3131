// The tables of the scanner's displays: how image levels become display levels, and the palette. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace operations {

inline constexpr size_t kMapSize = 256;
inline constexpr size_t kMostPaletteEntries = 256;
inline constexpr size_t kBitmapPaletteEntries = 128;  // a picture uses the lower half of the palette

using MapTable = std::array<uint8_t, kMapSize>;

// Spreads the image's levels over range display levels.
MapTable remoteMap(uint32_t range);

// The normal view's levels, then the quality review's, which alternates between its own and the normal ones.
struct LocalMaps {
    MapTable normal;
    MapTable quality;
};
LocalMaps localMaps(uint32_t firstNormal, uint32_t normalCount, uint32_t firstQuality, uint32_t qualityCount);

// Index in the top byte, then red, green and blue.
uint32_t paletteEntry(uint32_t index, uint32_t red, uint32_t green, uint32_t blue);

// The entries for a picture whose pixels have been halved: every second colour of its map, but the last for the last.
std::vector<uint32_t> bitmapPalette(std::span<const uint32_t, 256> colors);

// Halves pixel values, so that they refer to the lower half of the palette.
void halvePixels(std::span<uint8_t> pixels);

// Exchanges the rows top to bottom.
void reverseRows(std::span<uint8_t> pixels, size_t width, size_t height);

}  // namespace operations
