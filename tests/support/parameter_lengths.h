// What tester and simulated scanner must agree on without sharing a line: the lengths of the parameter sets.
#pragma once

#include <cstdint>

namespace support {

// Bytes of every set by its number, as the scanners' parameter table lists them; 44 is missing.
inline constexpr uint32_t kParameterLengths[] = {
    56,  8,  40,     788, 16,  20,  131072, 24,     8,  256,  // 0
    8,   16, 28,     4,   12,  16,  36,     36,     36, 256,  // 10
    4,   16, 8,      40,  788, 16,  20,     131072, 24, 8,    // 20
    256, 4,  16,     4,   16,  48,  16,     16,     16, 12,   // 30
    12,  20, 20,     28,  0,   20,  8,      8,      40, 148,  // 40
    16,  36, 131072, 12,  8,   256, 4,      16,     12, 40,   // 50
    16,  20, 4,      40,  16,  28,  40,     40,     40, 40,   // 60
    40,  12, 12,     12,  32,  124, 16,     12,     76, 16,   // 70
    40,  8,  40,     788, 16,  20,  4,      4,      12, 40,   // 80
    12,  40, 20,     20,  20,  40,  40,     40,     16, 788,  // 90
    16,  16, 788,    16,  788, 28,                            // 100
};

}  // namespace support
