#include "simulator/ridge_pattern.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "simulator/noise.h"
#include "simulator/ridge_grid.h"

namespace simulator {

namespace {

constexpr float kDarkest = 190;  // below the blank level
constexpr float kGrain = 6;      // of the sensor
constexpr float kNone = 1.0F / 512;

// Weights of four neighbours for a place between the middle two.
std::array<float, 4> cubicWeights(float t) {
    const float s = 1 - t;
    return {-0.5F * t * s * s, 1 + t * t * (1.5F * t - 2.5F), 1 + s * s * (1.5F * s - 2.5F), -0.5F * s * t * t};
}

// The pixels that lie between the grid's places, with room for their neighbours.
struct Span {
    int first;
    int last;
};

Span pixelsBetween(float origin, float step, int places, uint32_t pixels) {
    const float first = std::ceil(origin + 1.5F * step);
    const float last = std::floor(origin + step * (static_cast<float>(places) - 2.5F));
    return {std::max(0, static_cast<int>(first)), std::min(static_cast<int>(pixels), static_cast<int>(last))};
}

// One line of pixels high, still as wide as the grid.
struct GridLine {
    std::vector<float> ridge;
    std::vector<float> press;
};

void interpolateLine(const RidgeGrid& grid, int pixelLine, GridLine& line) {
    const float y = (static_cast<float>(pixelLine) - grid.top) / grid.step;
    const int row = static_cast<int>(y);
    const float part = y - static_cast<float>(row);
    const std::array<float, 4> weights = cubicWeights(part);
    const float* const ridge = &grid.ridge[grid.at(0, row - 1)];
    const float* const press = &grid.press[grid.at(0, row)];
    const auto width = static_cast<size_t>(grid.width);
    for (size_t x = 0; x < width; ++x) {
        line.ridge[x] = weights[0] * ridge[x] + weights[1] * ridge[x + width] + weights[2] * ridge[x + 2 * width] +
                        weights[3] * ridge[x + 3 * width];
        line.press[x] = press[x] + part * (press[x + width] - press[x]);
    }
}

float darknessAt(const GridLine& line, float x) {
    const auto column = static_cast<size_t>(x);
    const float part = x - static_cast<float>(column);
    const float press = line.press[column] + part * (line.press[column + 1] - line.press[column]);
    if (press < -2) {
        return 0;
    }
    const std::array<float, 4> weights = cubicWeights(part);
    const float* const ridge = &line.ridge[column - 1];
    const float value = weights[0] * ridge[0] + weights[1] * ridge[1] + weights[2] * ridge[2] + weights[3] * ridge[3];
    // Moist skin is darker as a whole, and ridges are round: their flanks are paler.
    return std::clamp(0.42F + 0.62F * value + 0.75F * press, 0.0F, 1.0F) * std::min(1.0F, 0.88F + 0.3F * press);
}

void darken(uint8_t& pixel, float darkness, float grain) {
    const float level = static_cast<float>(kBlankLevel) - kDarkest * darkness * (1 - 0.12F * grain) - kGrain * grain;
    pixel = std::min(pixel, static_cast<uint8_t>(level));
}

// The pores along the crests of ridges: bright dots, about two to a ridge's width and length.
void prick(GrayView picture, const RidgePatch& patch, Span columns, Span lines) {
    const float cell = 1.1F * patch.period;
    const int size = std::max(1, static_cast<int>(patch.period / 4.5F));
    for (float y = static_cast<float>(lines.first); y < static_cast<float>(lines.last) - cell - 2; y += cell) {
        for (float x = static_cast<float>(columns.first); x < static_cast<float>(columns.last) - cell - 2; x += cell) {
            const auto column = static_cast<int32_t>(x);
            const auto row = static_cast<int32_t>(y);
            const auto left = static_cast<size_t>(x + cell * noiseAt(patch.seed ^ 8, column, row));
            const auto top = static_cast<size_t>(y + cell * noiseAt(patch.seed ^ 9, column, row));
            if (picture.pixels[top * picture.width + left] > kBlankLevel - 150) {
                continue;
            }
            for (size_t i = 0; i < static_cast<size_t>(size * size); ++i) {
                const size_t at =
                    (top + i / static_cast<size_t>(size)) * picture.width + left + i % static_cast<size_t>(size);
                picture.pixels[at] = static_cast<uint8_t>(std::min(picture.pixels[at] + 70, kBlankLevel - 20));
            }
        }
    }
}

}  // namespace

void drawBlank(GrayView picture, uint64_t seed) {
    for (size_t i = 0; i < picture.pixels.size(); ++i) {
        const float grain = noiseAt(seed, static_cast<int32_t>(i), 0);
        picture.pixels[i] = static_cast<uint8_t>(static_cast<float>(kBlankLevel) - kGrain * grain);
    }
}

void drawRidges(GrayView picture, const RidgePatch& patch) {
    if (patch.period < 2 || patch.halfWidth <= 0 || patch.halfHeight <= 0) {
        return;
    }
    const RidgeGrid grid = growRidgeGrid(patch, picture.width, picture.height);
    if (grid.width == 0) {
        return;
    }
    const Span columns = pixelsBetween(grid.left, grid.step, grid.width, picture.width);
    const Span lines = pixelsBetween(grid.top, grid.step, grid.height, picture.height);
    GridLine line{std::vector<float>(static_cast<size_t>(grid.width)),
                  std::vector<float>(static_cast<size_t>(grid.width))};
    const float inverse = 1 / grid.step;
    for (int y = lines.first; y < lines.last; ++y) {
        interpolateLine(grid, y, line);
        for (int x = columns.first; x < columns.last; ++x) {
            const float darkness = darknessAt(line, (static_cast<float>(x) - grid.left) * inverse);
            if (darkness > kNone) {
                uint8_t& pixel = picture.pixels[static_cast<size_t>(y) * picture.width + static_cast<size_t>(x)];
                darken(pixel, darkness, noiseAt(patch.seed ^ 7, x, y));
            }
        }
    }
    prick(picture, patch, columns, lines);
}

}  // namespace simulator
