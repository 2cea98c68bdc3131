#include "operations/parameter_table.h"

#include <gtest/gtest.h>

#include <map>

namespace operations {
namespace {

// Every set by its number, as the scanners' parameter table lists them; 44 is missing.
constexpr uint32_t kExpected[] = {
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

TEST(ParameterTable, GivesEverySetsLength) {
    for (uint32_t set = 0; set < std::size(kExpected); ++set)
        EXPECT_EQ(parameterSetLength(set), kExpected[set]) << "set " << set;
}

TEST(ParameterTable, NumbersAbove105AreNoSets) {
    EXPECT_EQ(std::size(kExpected), 106u);
    for (const uint32_t set : {106u, 200u, 255u, 256u, 261u, 0xFFFFFFFFu})
        EXPECT_EQ(parameterSetLength(set), 0u) << "set " << set;
}

TEST(FieldText, IsFilledWithZeros) {
    uint32_t field[] = {0xFFFFFFFF, 0xFFFFFFFF};
    putFieldText(field, "ab");
    EXPECT_EQ(field[0], 0x00006261u);
    EXPECT_EQ(field[1], 0u);
}

TEST(FieldText, IsCutToLeaveRoomForItsZero) {
    uint32_t field[] = {0xFFFFFFFF, 0xFFFFFFFF};
    putFieldText(field, "abcdefghij");
    EXPECT_EQ(field[0], 0x64636261u);
    EXPECT_EQ(field[1], 0x00676665u);
}

}  // namespace
}  // namespace operations
