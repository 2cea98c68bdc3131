// What is known of the scanner's parameter sets: their numbers and lengths, and the layouts that are more than numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace operations {

inline constexpr uint32_t kIdentitySet = 0;  // three texts, then four numbers
inline constexpr uint32_t kCameraSet = 63;   // exposures, gains and offsets
inline constexpr uint32_t kTripletSet = 75;  // one number, then rows of three

// Bytes of the set, 0 when there is no set of this number. The lengths are those of the scanners' parameter table.
uint32_t parameterSetLength(uint32_t set);

// The texts of the identity set, by the bytes of their fields; each ends in a zero and fills its field with zeros.
inline constexpr size_t kIdentityFields[] = {8, 16, 16};

// Writes a text into the words of one field, cut to what leaves room for its zero.
void putFieldText(std::span<uint32_t> field, std::string_view text);

}  // namespace operations
