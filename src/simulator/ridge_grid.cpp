#include "simulator/ridge_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

#include "simulator/noise.h"
#include "simulator/ridge_filter.h"

namespace simulator {

namespace {

constexpr int kRounds = 8;
constexpr float kOutside = -1;     // touch where no ridge is drawn
constexpr float kFarBelow = -3;    // press where nothing can be seen
constexpr float kOverhang = 1.1F;  // how far the ragged edge may reach beyond the ellipse

// What is needed only while the ridges grow.
struct Growth {
    std::vector<float> touch;      // 0 at the edge of the patch, 1 well inside
    std::vector<uint16_t> filter;  // the filter that fits the place
    std::vector<int> first;        // of each line the first place that touches
    std::vector<int> last;         // and the one behind the last
};

// The place in half extents of the patch, upright.
Point patchPlace(const RidgePatch& patch, Point place) {
    const float x = place.x - patch.centre.x;
    const float y = place.y - patch.centre.y;
    const float c = std::cos(patch.tilt);
    const float s = std::sin(patch.tilt);
    return {(x * c + y * s) / patch.halfWidth, (y * c - x * s) / patch.halfHeight};
}

// Twice the direction is the sum of the bearings of the cores less those of the deltas, plus what the arch bends.
float directionAt(const RidgeFlow& flow, Point place, Point at) {
    std::complex<float> turn{1, 0};
    const auto bearing = [&](Point from) {
        const std::complex<float> way{place.x - from.x, from.y - place.y};
        return way / (std::abs(way) + 1e-3F);
    };
    for (const Point& core : flow.cores) {
        turn *= bearing(core);
    }
    for (const Point& delta : flow.deltas) {
        turn *= std::conj(bearing(delta));
    }
    const float fall = at.y + 0.2F;
    const float slope = flow.arch * at.x * std::exp(-1.2F * at.x * at.x - 0.8F * fall * fall);
    return std::arg(turn) / 2 + flow.angle - std::atan(slope);
}

float touchAt(const RidgePatch& patch, Point at) {
    constexpr float kSquareness = 2.3F;
    const float radius =
        std::pow(std::pow(std::abs(at.x), kSquareness) + std::pow(std::abs(at.y), kSquareness), 1 / kSquareness);
    if (radius > kOverhang) {
        return kOutside;
    }
    const float ragged = 0.09F * (smoothNoiseAt(patch.seed ^ 1, at.x * 3, at.y * 3) - 0.5F) +
                         0.03F * (smoothNoiseAt(patch.seed ^ 5, at.x * 12, at.y * 12) - 0.5F);
    const float ridges = (1.0F + ragged - radius) * std::min(patch.halfWidth, patch.halfHeight) / patch.period;
    return std::clamp(ridges / 4, kOutside, 1.0F);
}

// Darker and paler areas, from the pressure and the moisture of the skin.
float blotchAt(const RidgePatch& patch, Point place) {
    const float x = place.x / patch.period;
    const float y = place.y / patch.period;
    return 0.8F * (smoothNoiseAt(patch.seed ^ 2, x / 16, y / 16) - 0.5F) +
           0.7F * (smoothNoiseAt(patch.seed ^ 3, x / 3, y / 3) - 0.5F);
}

RidgeGrid layOut(const RidgePatch& patch, float width, float height) {
    RidgeGrid grid;
    grid.step = patch.period / kGridPeriod;
    const float c = std::abs(std::cos(patch.tilt));
    const float s = std::abs(std::sin(patch.tilt));
    const float reachX = kOverhang * (patch.halfWidth * c + patch.halfHeight * s);
    const float reachY = kOverhang * (patch.halfWidth * s + patch.halfHeight * c);
    const float left = std::max(patch.centre.x - reachX, 0.0F);
    const float top = std::max(patch.centre.y - reachY, 0.0F);
    const float right = std::min(patch.centre.x + reachX, width);
    const float bottom = std::min(patch.centre.y + reachY, height);
    if (right <= left || bottom <= top) {
        return grid;
    }
    const float margin = (kFilterReach + 2) * grid.step;
    grid.left = left - margin;
    grid.top = top - margin;
    grid.width = static_cast<int>((right - left + 2 * margin) / grid.step) + 1;
    grid.height = static_cast<int>((bottom - top + 2 * margin) / grid.step) + 1;
    return grid;
}

void sow(RidgeGrid& grid, Growth& growth, const RidgePatch& patch, int x, int y) {
    const Point place = grid.place(x, y);
    const Point at = patchPlace(patch, place);
    const float touch = touchAt(patch, at);
    if (touch <= kOutside) {
        return;
    }
    const size_t i = grid.at(x, y);
    const float reach = 10 * patch.period;
    const float width = 2 * smoothNoiseAt(patch.seed ^ 4, place.x / reach, place.y / reach) - 1;
    growth.touch[i] = touch;
    growth.filter[i] = ridgeFilterFor(directionAt(patch.flow, place, at), width);
    growth.first[static_cast<size_t>(y)] = std::min(growth.first[static_cast<size_t>(y)], x);
    growth.last[static_cast<size_t>(y)] = x + 1;
    grid.ridge[i] = 2 * noiseAt(patch.seed, x, y) - 1;
}

Growth sowAll(RidgeGrid& grid, const RidgePatch& patch) {
    const size_t count = static_cast<size_t>(grid.width) * static_cast<size_t>(grid.height);
    const auto lines = static_cast<size_t>(grid.height);
    grid.ridge.assign(count, 0);
    Growth growth{std::vector<float>(count, kOutside), std::vector<uint16_t>(count),
                  std::vector<int>(lines, grid.width), std::vector<int>(lines, 0)};
    // The filters look beyond a place, one column more to the right than to the left.
    for (int y = kFilterReach; y < grid.height - kFilterReach; ++y) {
        for (int x = kFilterReach; x < grid.width - kFilterReach - 1; ++x) {
            sow(grid, growth, patch, x, y);
        }
    }
    return growth;
}

void grow(RidgeGrid& grid, const Growth& growth) {
    std::vector<float> grown = grid.ridge;
    for (int round = 0; round < kRounds; ++round) {
        for (int y = kFilterReach; y < grid.height - kFilterReach; ++y) {
            for (int x = growth.first[static_cast<size_t>(y)]; x < growth.last[static_cast<size_t>(y)]; ++x) {
                const size_t i = grid.at(x, y);
                const float value =
                    applyRidgeFilter(ridgeFilter(growth.filter[i]), &grid.ridge[i], static_cast<size_t>(grid.width));
                grown[i] = std::clamp(value, -1.0F, 1.0F);
            }
        }
        std::swap(grid.ridge, grown);
    }
}

// Where the skin hardly touches only the crests of the ridges are seen.
void press(RidgeGrid& grid, const Growth& growth, const RidgePatch& patch) {
    grid.press.assign(growth.touch.size(), kFarBelow);
    for (int y = 0; y < grid.height; ++y) {
        for (int x = growth.first[static_cast<size_t>(y)]; x < growth.last[static_cast<size_t>(y)]; ++x) {
            const size_t i = grid.at(x, y);
            if (growth.touch[i] > kOutside) {
                grid.press[i] = std::min(3 * growth.touch[i] - 1.5F, 0.1F) + blotchAt(patch, grid.place(x, y));
            }
        }
    }
}

Point creasePlace(const Crease& crease, float t) {
    const auto bent = [t](float from, float bend, float to) {
        return std::lerp(std::lerp(from, bend, t), std::lerp(bend, to, t), t);
    };
    return {bent(crease.from.x, crease.bend.x, crease.to.x), bent(crease.from.y, crease.bend.y, crease.to.y)};
}

// Lifts the skin around one place of a crease.
void lift(RidgeGrid& grid, Point centre, float half) {
    const int reach = static_cast<int>(2 * half / grid.step) + 1;
    const int column = static_cast<int>((centre.x - grid.left) / grid.step);
    const int line = static_cast<int>((centre.y - grid.top) / grid.step);
    for (int y = std::max(0, line - reach); y < std::min(grid.height, line + reach + 1); ++y) {
        for (int x = std::max(0, column - reach); x < std::min(grid.width, column + reach + 1); ++x) {
            const Point place = grid.place(x, y);
            const float away = std::hypot(place.x - centre.x, place.y - centre.y) / half;
            float& value = grid.press[grid.at(x, y)];
            value = std::min(value, 2.5F * away - 4);
        }
    }
}

void fold(RidgeGrid& grid, const Crease& crease, const RidgePatch& patch) {
    const float length = std::hypot(crease.bend.x - crease.from.x, crease.bend.y - crease.from.y) +
                         std::hypot(crease.to.x - crease.bend.x, crease.to.y - crease.bend.y);
    const int steps = static_cast<int>(1.5F * length / grid.step) + 1;
    for (int i = 0; i <= steps; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        Point place = creasePlace(crease, t);
        const float wobble =
            smoothNoiseAt(patch.seed ^ 6, place.x / patch.period / 4, place.y / patch.period / 4) - 0.5F;
        place.y += patch.period * wobble;
        // It runs out at its ends, and is interrupted here and there.
        const float depth = std::min(1.0F, 6 * std::min(t, 1 - t)) * (0.8F + wobble);
        if (depth > 0.15F) {
            lift(grid, place, crease.width / 2 * depth);
        }
    }
}

}  // namespace

RidgeGrid growRidgeGrid(const RidgePatch& patch, uint32_t width, uint32_t height) {
    RidgeGrid grid = layOut(patch, static_cast<float>(width), static_cast<float>(height));
    if (grid.width == 0) {
        return grid;
    }
    const Growth growth = sowAll(grid, patch);
    grow(grid, growth);
    press(grid, growth, patch);
    for (const Crease& crease : patch.creases) {
        fold(grid, crease, patch);
    }
    return grid;
}

}  // namespace simulator
