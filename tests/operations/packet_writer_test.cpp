#include "operations/packet_writer.h"

#include <gtest/gtest.h>

#include <array>

namespace operations {
namespace {

TEST(PacketWriter, PutsTheLowBytesOfEachWidthLowestFirst) {
    std::array<uint8_t, 10> room{};
    PacketWriter writer(room);
    writer.put(0x44332211, 4);
    writer.put(0x44332211, 3);
    writer.put(0x44332211, 2);
    writer.put(0x44332211, 1);
    EXPECT_EQ(room, (std::array<uint8_t, 10>{0x11, 0x22, 0x33, 0x44, 0x11, 0x22, 0x33, 0x11, 0x22, 0x11}));
    EXPECT_EQ(writer.length(), 10u);
    EXPECT_FALSE(writer.overrun());
}

TEST(PacketWriter, LeavesOutWhatDoesNotFitWhole) {
    std::array<uint8_t, 6> memory{};
    PacketWriter writer({memory.data(), 5});
    writer.put(0xFFFFFFFF, 2);
    writer.put(0xFFFFFFFF, 4);
    EXPECT_EQ(memory, (std::array<uint8_t, 6>{0xFF, 0xFF, 0, 0, 0, 0}));
    EXPECT_EQ(writer.length(), 2u);
    EXPECT_TRUE(writer.overrun());
}

TEST(PacketWriter, TakesNothingMoreAfterSomethingWasLeftOut) {
    std::array<uint8_t, 3> room{};
    PacketWriter writer(room);
    writer.put(0xFFFFFFFF, 4);
    writer.put(0xFFFFFFFF, 1);
    EXPECT_EQ(room, (std::array<uint8_t, 3>{}));
    EXPECT_EQ(writer.length(), 0u);
}

}  // namespace
}  // namespace operations
