#include "simulator/ridge_filter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace simulator {

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr int kDirections = 48;
constexpr int kWidths = 5;
constexpr float kWidthSpread = 0.14F;  // how far ridges may lie closer or wider
constexpr float kAlong = 2.1F;         // how far a filter looks along a ridge
constexpr float kAcross = 1.7F;        // and across it
// A wave comes out of a filter stronger than it went in, so that the ridges win over the noise.
constexpr float kGain = 2.6F;

RidgeFilter makeFilter(float direction, float period) {
    RidgeFilter filter{};
    RidgeFilter window{};
    float sum = 0;
    float weight = 0;
    for (int y = -kFilterReach; y <= kFilterReach; ++y) {
        for (int x = -kFilterReach; x <= kFilterReach; ++x) {
            // The direction counts anticlockwise while lines count downwards.
            const float u = static_cast<float>(x) * std::cos(direction) - static_cast<float>(y) * std::sin(direction);
            const float v = static_cast<float>(x) * std::sin(direction) + static_cast<float>(y) * std::cos(direction);
            const auto i = static_cast<size_t>((y + kFilterReach) * kFilterLanes + x + kFilterReach);
            window[i] = std::exp(-u * u / (2 * kAlong * kAlong) - v * v / (2 * kAcross * kAcross));
            filter[i] = window[i] * std::cos(2 * kPi * v / period);
            sum += filter[i];
            weight += window[i];
        }
    }
    // An even area must come out as nothing, or ridges would grow wider than valleys.
    float size = 0;
    for (size_t i = 0; i < filter.size(); ++i) {
        filter[i] -= window[i] * sum / weight;
        size += std::abs(filter[i]);
    }
    for (float& value : filter) {
        value *= kGain / size;
    }
    return filter;
}

const std::vector<RidgeFilter>& filters() {
    static const std::vector<RidgeFilter> all = [] {
        std::vector<RidgeFilter> made;
        for (int i = 0; i < kDirections * kWidths; ++i) {
            const float width = 2.0F * static_cast<float>(i % kWidths) / (kWidths - 1) - 1.0F;
            made.push_back(makeFilter(kPi * static_cast<float>(i / kWidths) / kDirections,
                                      kGridPeriod * (1.0F + kWidthSpread * width)));
        }
        return made;
    }();
    return all;
}

}  // namespace

uint16_t ridgeFilterFor(float direction, float width) {
    const float turn = direction / kPi;
    const auto nearest = static_cast<int>(std::lround((turn - std::floor(turn)) * kDirections)) % kDirections;
    const auto step = std::clamp(static_cast<int>((width + 1) / 2 * kWidths), 0, kWidths - 1);
    return static_cast<uint16_t>(nearest * kWidths + step);
}

const RidgeFilter& ridgeFilter(uint16_t number) {
    return filters()[number];
}

float applyRidgeFilter(const RidgeFilter& filter, const float* place, size_t pitch) {
    std::array<float, kFilterLanes> sums{};
    const float* values = place - kFilterReach * static_cast<std::ptrdiff_t>(pitch) - kFilterReach;
    const float* weights = filter.data();
    for (int row = 0; row <= 2 * kFilterReach; ++row) {
        for (size_t lane = 0; lane < kFilterLanes; ++lane) {
            sums[lane] += weights[lane] * values[lane];
        }
        values += pitch;
        weights += kFilterLanes;
    }
    float sum = 0;
    for (const float lane : sums) {
        sum += lane;
    }
    return sum;
}

}  // namespace simulator
