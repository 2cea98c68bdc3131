#include "simulator/command_packet.h"

#include <vector>

#include "simulator_test.h"

namespace simulator {
namespace {

TEST(CommandPacketTest, ReadsHeaderAndPayload) {
    const std::vector<uint8_t> bytes = makePacket(0x01020304, 0xFFFFFFFE, {9, 8, 7});
    const auto packet = readPacket(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->code, 0x01020304u);
    EXPECT_EQ(packet->tag, 0xFFFFFFFEu);
    EXPECT_EQ(std::vector<uint8_t>(packet->payload.begin(), packet->payload.end()), (std::vector<uint8_t>{9, 8, 7}));
}

TEST(CommandPacketTest, HeaderAloneIsEnoughAndOneByteLessIsNot) {
    const std::vector<uint8_t> bytes = makePacket(1, 2);
    EXPECT_TRUE(readPacket(bytes));
    for (size_t size = 0; size < 12; ++size) {
        // A copy of the exact size, so that the address sanitizer sees any step beyond.
        const std::vector<uint8_t> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(readPacket(cut)) << size;
    }
}

TEST(CommandPacketTest, SizeMayBeLessThanThePayloadButNotMore) {
    std::vector<uint8_t> bytes = makePacket(10, 1, std::vector<uint8_t>(52, 3));
    bytes[8] = 0;
    ASSERT_TRUE(readPacket(bytes));
    EXPECT_EQ(readPacket(bytes)->payload.size(), 52u);
    bytes[8] = 52;
    EXPECT_TRUE(readPacket(bytes));
    bytes[8] = 53;
    EXPECT_FALSE(readPacket(bytes));
    bytes[8] = bytes[9] = bytes[10] = bytes[11] = 0xFF;
    EXPECT_FALSE(readPacket(bytes));
}

TEST(PayloadReaderTest, FieldsFollowEachOtherLittleEndian) {
    const std::vector<uint8_t> payload{1, 2, 3, 4, 5, 6, 7, 8, 9};
    PayloadReader reader(payload);
    EXPECT_EQ(reader.u8(), 1u);
    EXPECT_EQ(reader.u16(), 0x0302u);
    EXPECT_EQ(reader.u32(), 0x07060504u);
    EXPECT_EQ(reader.bytes(2).size(), 2u);
    EXPECT_FALSE(reader.isMissing());
    reader.u8();
    EXPECT_TRUE(reader.isMissing());
}

TEST(PayloadReaderTest, WhatLiesBeyondTheEndReadsAsZero) {
    const std::vector<uint8_t> payload{0x11, 0x22, 0x33};
    PayloadReader reader(payload);
    EXPECT_EQ(reader.u32(), 0x00332211u);
    EXPECT_TRUE(reader.isMissing());
    EXPECT_EQ(reader.u32(), 0u);
    EXPECT_TRUE(reader.bytes(5).empty());
}

}  // namespace
}  // namespace simulator
