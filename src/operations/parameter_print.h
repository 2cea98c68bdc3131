// Showing the values of a parameter set. Main thread only.
#pragma once

#include <cstdint>
#include <span>

#include "operations/number_format.h"

namespace operations {

inline constexpr size_t kMostItemsShown = 160;

// Prints the values of the set, one item a word, in the set's own layout.
void printParameters(uint32_t set, std::span<const uint32_t> items, const NumberFormat& format);

}  // namespace operations
