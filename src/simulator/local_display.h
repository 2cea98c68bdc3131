// The display that is built into a scanner: 1024 x 768 pixels of 8 bits, seen through a palette. Whatever lies outside
// is cut off. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace simulator {

inline constexpr uint32_t kDisplayWidth = 1024;
inline constexpr uint32_t kDisplayHeight = 768;

// Pixels from the left and from the top; may reach beyond the display.
struct Area {
    uint32_t x = 0;
    uint32_t y = 0;
    uint32_t width = kDisplayWidth;
    uint32_t height = kDisplayHeight;
};

using GrayMap = std::array<uint8_t, 256>;
GrayMap identityMap();

// An image on its way to the display: 8-bit pixels, pitch bytes from line to line.
struct Picture {
    std::span<const uint8_t> pixels;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t pitch = 0;
};

class LocalDisplay {
public:
    LocalDisplay();

    void turn(bool isOn);
    bool isOn() const { return isOn_; }
    // Line after line from the top.
    const std::vector<uint8_t>& pixels() const { return pixels_; }
    // Red, green and blue in the low bytes, blue the lowest.
    const std::array<uint32_t, 256>& palette() const { return palette_; }
    void setPaletteEntry(uint8_t index, uint32_t color);

    void fill(const Area& area, uint8_t pixel);
    // A bitmap comes with its bottom line first, as files of bitmaps have it.
    void writeBitmap(const Area& area, std::span<const uint8_t> pixels);
    // Shows an image in the image area from a line of it on, scaled down evenly if it is larger, through a gray map.
    // Nothing while images are off.
    void showImage(const Picture& picture, const GrayMap& map, uint32_t firstLine);

    // Whether what a person sees may have changed since the last call.
    bool takeChange() { return std::exchange(isChanged_, false); }

    GrayMap normalMap = identityMap();
    GrayMap qualityMap = identityMap();
    Area imageArea;
    bool showsImages = true;
    uint32_t overlayColor = 0;

private:
    void set(uint64_t x, uint64_t y, uint8_t pixel);

    bool isOn_ = true;
    bool isChanged_ = true;
    std::vector<uint8_t> pixels_;
    std::array<uint32_t, 256> palette_{};
};

// What the scanner knows of the display area on the host.
class RemoteDisplay {
public:
    const GrayMap& map() const { return map_; }
    void setMap(const GrayMap& map);
    // Whether the map may have changed since the last call.
    bool takeChange() { return std::exchange(isChanged_, false); }

    uint32_t width = 0;
    uint32_t height = 0;
    bool isOn = false;
    uint32_t bandLines = 0;  // 0: whole frames

private:
    bool isChanged_ = true;
    GrayMap map_ = identityMap();
};

}  // namespace simulator
