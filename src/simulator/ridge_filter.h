// The filters that grow ridges: each makes waves of one direction and one period stronger and everything else weaker.
// They work on a grid on which ridges are about kGridPeriod places apart. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace simulator {

inline constexpr float kGridPeriod = 4.5F;
inline constexpr int kFilterReach = 5;   // grid places to each side
inline constexpr int kFilterLanes = 12;  // columns, one more than are used, for whole vectors

// Line after line; the last column is 0.
using RidgeFilter = std::array<float, static_cast<size_t>((2 * kFilterReach + 1) * kFilterLanes)>;

// The filter for a direction (radians, anticlockwise from level) and a width: -1 for narrow ridges to 1 for wide ones.
uint16_t ridgeFilterFor(float direction, float width);
const RidgeFilter& ridgeFilter(uint16_t number);

// The filter's sum over the surroundings of a place; lines of the grid lie pitch values apart.
float applyRidgeFilter(const RidgeFilter& filter, const float* place, size_t pitch);

}  // namespace simulator
