// Which images can be used, and how their resolution reads. Pure; any thread.
#pragma once

#include <cstdint>

namespace tifffile {

// width * height, or 0 for an image without pixels and one whose byte count does not fit into a result.
constexpr uint32_t imageByteCount(uint32_t width, uint32_t height) {
    const uint64_t count = uint64_t{width} * height;
    return count <= INT32_MAX ? static_cast<uint32_t>(count) : 0;
}

// How many image bytes a byte of the file stands for at most, compressed as well as can be.
inline constexpr uint64_t kExpansionNone = 1;
inline constexpr uint64_t kExpansionPackBits = 64;
inline constexpr uint64_t kExpansionDeflate = 1032;
inline constexpr uint64_t kExpansionLzw = 4096;

// False for a file too small for the image it speaks of, so that nobody gets memory for it; expansion is not 0.
constexpr bool canHold(uint64_t fileSize, uint64_t byteCount, uint64_t expansion) {
    return byteCount / expansion <= fileSize;
}

enum class ResolutionUnit { none, inch, centimeter };

// Rounded dots per inch; 0 when the file says nothing sensible, or nothing.
constexpr uint16_t dotsPerInch(double resolution, ResolutionUnit unit) {
    const double dots = unit == ResolutionUnit::centimeter ? resolution * 2.54 : resolution;
    if (unit == ResolutionUnit::none || !(dots > 0) || dots >= UINT16_MAX + 0.5)
        return 0;
    return static_cast<uint16_t>(dots + 0.5);
}

}  // namespace tifffile
