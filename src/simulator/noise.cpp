#include "simulator/noise.h"

#include <cmath>

namespace simulator {

namespace {

float unit(uint64_t bits) {
    return static_cast<float>(bits >> 40) * (1.0F / 16'777'216.0F);
}

float eased(float t) {
    return t * t * (3.0F - 2.0F * t);
}

}  // namespace

float noiseAt(uint64_t seed, int32_t x, int32_t y) {
    return unit(mixBits(seed ^ (static_cast<uint64_t>(static_cast<uint32_t>(x)) << 32 | static_cast<uint32_t>(y))));
}

float smoothNoiseAt(uint64_t seed, float x, float y) {
    const float left = std::floor(x);
    const float top = std::floor(y);
    const auto column = static_cast<int32_t>(left);
    const auto row = static_cast<int32_t>(top);
    const float across = eased(x - left);
    const float down = eased(y - top);
    const float upper = std::lerp(noiseAt(seed, column, row), noiseAt(seed, column + 1, row), across);
    const float lower = std::lerp(noiseAt(seed, column, row + 1), noiseAt(seed, column + 1, row + 1), across);
    return std::lerp(upper, lower, down);
}

float Random::within(float least, float most) {
    return least + unit(next()) * (most - least);
}

}  // namespace simulator
