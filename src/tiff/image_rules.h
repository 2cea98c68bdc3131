// Which images can be used, and how their resolution reads. Pure; any thread.
#pragma once

#include <cstdint>

namespace tifffile {

// width * height, or 0 for an image without pixels and one whose byte count does not fit into a result.
constexpr uint32_t imageByteCount(uint32_t width, uint32_t height) {
    const uint64_t count = uint64_t{width} * height;
    return count <= INT32_MAX ? static_cast<uint32_t>(count) : 0;
}

// How many image bytes a byte of the file stands for at most, compressed as well as can be, by the number that TIFF has
// for the compression; 0 for one that is not read.
constexpr uint64_t expansionOf(uint64_t compression) {
    switch (compression) {
        case 1:  // none
            return 1;
        case 5:  // LZW
            return 4096;
        case 8:  // Deflate, by its new and its old number
        case 32946:
            return 1032;
        case 32773:  // PackBits
            return 64;
        default:
            return 0;
    }
}

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
