#include "simulator/image_quality.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

// Large enough to hold a ridge and a valley of any resolution up to 1000 pixels per inch.
constexpr size_t kBlock = 20;

struct Levels {
    uint8_t least = 255;
    uint8_t most = 0;
    uint32_t mean = 0;
};

Levels levelsOf(std::span<const uint8_t> pixels, size_t width, size_t left, size_t top) {
    Levels levels;
    for (size_t y = top; y < top + kBlock; ++y) {
        for (size_t x = left; x < left + kBlock; ++x) {
            const uint8_t level = pixels[y * width + x];
            levels.least = std::min(levels.least, level);
            levels.most = std::max(levels.most, level);
            levels.mean += level;
        }
    }
    levels.mean /= kBlock * kBlock;
    return levels;
}

struct Blocks {
    uint32_t all = 0;
    uint32_t contact = 0;
    uint32_t good = 0;
    uint32_t dark = 0;
    uint32_t light = 0;
    uint32_t smear = 0;

    void count(const Levels& levels) {
        ++all;
        if (levels.least > 200) {
            return;
        }
        ++contact;
        if (levels.most - levels.least < 60) {
            ++smear;
        } else if (levels.mean < 100) {
            ++dark;
        } else if (levels.mean > 200) {
            ++light;
        } else {
            ++good;
        }
    }
};

uint16_t perCent(uint32_t part, uint32_t whole) {
    return static_cast<uint16_t>(whole == 0 ? 0 : 100 * part / whole);
}

}  // namespace

CaptureQuality measureCapture(uint32_t width, std::span<const uint8_t> pixels) {
    const size_t height = width == 0 ? 0 : pixels.size() / width;
    Blocks blocks;
    for (size_t y = 0; y + kBlock <= height; y += kBlock) {
        for (size_t x = 0; x + kBlock <= width; x += kBlock) {
            blocks.count(levelsOf(pixels, width, x, y));
        }
    }
    return {perCent(blocks.good, blocks.contact), perCent(blocks.contact, blocks.all),
            perCent(blocks.good, blocks.all),     perCent(blocks.dark, blocks.all),
            perCent(blocks.light, blocks.all),    perCent(blocks.smear, blocks.all)};
}

PlatenQuality measurePlaten(std::span<const uint8_t> pixels) {
    std::array<uint32_t, 256> counts{};
    for (const uint8_t pixel : pixels) {
        ++counts[pixel];
    }
    PlatenQuality quality;
    quality.totalPixels = static_cast<uint32_t>(pixels.size());
    quality.peakLevel = static_cast<uint32_t>(std::max_element(counts.begin(), counts.end()) - counts.begin());
    for (uint32_t level = 0; level < 256; ++level) {
        if (4 * level < quality.peakLevel) {
            quality.damagedPixels += counts[level];
        } else if (4 * level < 3 * quality.peakLevel) {
            quality.dirtyPixels += counts[level];
        }
    }
    return quality;
}

}  // namespace simulator
