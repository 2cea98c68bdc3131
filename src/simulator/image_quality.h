// What a scanner says about the quality of an image, measured on its pixels. Pure.
#pragma once

#include <cstdint>

#include "simulator/ridge_pattern.h"

namespace simulator {

// Areas in per cent of the picture, but for the cover factor.
struct CaptureQuality {
    uint16_t coverFactor = 0;  // good area in per cent of the contact area
    uint16_t contactArea = 0;  // anything dark at all
    uint16_t goodArea = 0;     // ridges and valleys well apart
    uint16_t darkArea = 0;     // valleys hardly to be seen
    uint16_t lightArea = 0;    // ridges hardly to be seen
    uint16_t smearArea = 0;    // neither dark nor bright
};

CaptureQuality measureCapture(uint32_t width, std::span<const uint8_t> pixels);

// Of an image of the empty platen.
struct PlatenQuality {
    uint32_t totalPixels = 0;
    uint32_t dirtyPixels = 0;    // darker than three quarters of the peak
    uint32_t damagedPixels = 0;  // darker than a quarter of it
    uint32_t peakLevel = 0;      // the most frequent level
};

PlatenQuality measurePlaten(std::span<const uint8_t> pixels);

}  // namespace simulator
