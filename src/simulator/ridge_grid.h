// The grid on which the ridges of a patch grow before they are drawn: as coarse as ridges allow, whatever the
// resolution of the picture, so that growing costs by the ridge and not by the pixel. Pure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "simulator/ridge_pattern.h"

namespace simulator {

struct RidgeGrid {
    float step = 1;  // pixels from place to place
    float left = 0;  // pixels of the picture at the first place
    float top = 0;
    int width = 0;
    int height = 0;
    std::vector<float> ridge;  // -1 in a valley to 1 on a ridge
    std::vector<float> press;  // what the pressure adds to that before it is seen; far below 0 where nothing touches

    size_t at(int x, int y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
    }
    Point place(int x, int y) const {
        return {left + static_cast<float>(x) * step, top + static_cast<float>(y) * step};
    }
};

// The grown grid of the part of the patch that lies in a picture of this size. Empty when there is none.
RidgeGrid growRidgeGrid(const RidgePatch& patch, uint32_t width, uint32_t height);

}  // namespace simulator
