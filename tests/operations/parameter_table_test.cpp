#include "operations/parameter_table.h"

#include <gtest/gtest.h>

#include <iterator>

#include "support/parameter_lengths.h"

namespace operations {
namespace {

TEST(ParameterTable, GivesEverySetsLength) {
    for (uint32_t set = 0; set < std::size(support::kParameterLengths); ++set)
        EXPECT_EQ(parameterSetLength(set), support::kParameterLengths[set]) << "set " << set;
}

TEST(ParameterTable, NumbersAbove105AreNoSets) {
    EXPECT_EQ(std::size(support::kParameterLengths), 106u);
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
