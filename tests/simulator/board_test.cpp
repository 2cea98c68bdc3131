#include "simulator/board.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

TEST(LogicMemoryTest, RegistersOfTwoChipsAreTwoRegisters) {
    LogicMemory memory;
    memory.writeRegister(1, 5, 0xFFFF);
    EXPECT_EQ(memory.readRegister(1, 5), 0xFFFF);
    EXPECT_EQ(memory.readRegister(2, 5), 0);
    EXPECT_EQ(memory.readRegister(1, 4), 0);
}

TEST(LogicMemoryTest, LatestFillingCounts) {
    LogicMemory memory;
    memory.fillBank(0, 10, 10, 1);
    memory.fillBank(0, 15, 10, 2);
    memory.fillBank(1, 10, 10, 3);
    EXPECT_EQ(memory.readBank(0, 14), 1);
    EXPECT_EQ(memory.readBank(0, 15), 2);
    EXPECT_EQ(memory.readBank(0, 24), 2);
    EXPECT_EQ(memory.readBank(0, 25), 0);
    EXPECT_EQ(memory.readBank(1, 15), 3);
}

TEST(LogicMemoryTest, FillingToTheEndOfAllAddressesDoesNotWrap) {
    LogicMemory memory;
    memory.fillBank(0, 0xFFFFFFFE, 0xFFFFFFFF, 9);
    EXPECT_EQ(memory.readBank(0, 0xFFFFFFFF), 9);
    EXPECT_EQ(memory.readBank(0, 0), 0);
}

TEST(LogicMemoryTest, OldFillingsAreForgotten) {
    LogicMemory memory;
    for (uint32_t i = 0; i <= LogicMemory::kMostFillings; ++i) {
        memory.fillBank(0, i, 1, 5);
    }
    EXPECT_EQ(memory.readBank(0, 0), 0);
    EXPECT_EQ(memory.readBank(0, 1), 5);
}

TEST(BoardTest, EepromIsErasedAtFirstAndOutlivesThePower) {
    Board board;
    ASSERT_EQ(board.eeprom.size(), 8192u);
    EXPECT_EQ(board.eeprom[8191], 0xFF);
    board.eeprom[1] = 2;
    board.dfcMask = 3;
    board.leds[12] = 1;
    board.powerUp();
    EXPECT_EQ(board.eeprom[1], 2);
    EXPECT_EQ(board.dfcMask, 0u);
    EXPECT_EQ(board.leds[12], 0u);
}

}  // namespace
}  // namespace simulator
