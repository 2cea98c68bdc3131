// The limits of an image's histogram, and the file in which they are tallied over many images.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace operations {

inline constexpr size_t kLevels = 256;

// The levels at which more than a fiftieth of the pixels lie below or above; level 0 takes no part. 0 where there is no
// such level. Pure.
struct HistogramLimits {
    int bottom = 0;
    int top = 0;
};
HistogramLimits histogramLimits(std::span<const uint8_t> pixels);

// For each level the number of images of which it was an edge.
using Tally = std::array<int32_t, kLevels>;

// Reads a tally of up to 256 lines "level<tab>count"; counts of a file that does not exist are 0. A file that ends
// early is said on the console, and what was read counts. None when there is something that cannot be
// read, or that is binary.
std::optional<Tally> readTally(const std::string& name);

// Writes the tally, level 255 first, in the place of the old file at once: a crash leaves the one or the other. False
// when it cannot be written; the old file is then as before.
bool writeTally(const std::string& name, const Tally& tally);

// Operation.
void histogramLimitsOfFile();

}  // namespace operations
