#include "operations/display_tables.h"

#include <gtest/gtest.h>

namespace operations {
namespace {

TEST(RemoteMap, RangeOf256IsTheIdentity) {
    const MapTable map = remoteMap(256);
    for (size_t level = 0; level < map.size(); ++level)
        EXPECT_EQ(map[level], level);
}

TEST(RemoteMap, RangeOf128EndsAt127) {
    EXPECT_EQ(remoteMap(128)[255], 127);
    EXPECT_EQ(remoteMap(128)[1], 0);
    EXPECT_EQ(remoteMap(128)[2], 1);
}

TEST(RemoteMap, LevelsAreBytes) {
    EXPECT_EQ(remoteMap(512)[255], 254);
    EXPECT_EQ(remoteMap(0)[255], 0);
}

TEST(LocalMaps, QualityAlternatesWithTheNormalMap) {
    const LocalMaps maps = localMaps(0, 256, 128, 64);
    EXPECT_EQ(maps.normal[3], 3);
    EXPECT_EQ(maps.quality[3], 128);
    EXPECT_EQ(maps.quality[2], 2);
    EXPECT_EQ(maps.quality[255], 128 + 63);
}

TEST(LocalMaps, StartAtTheirFirstLevelsAndWrap) {
    const LocalMaps maps = localMaps(10, 100, 250, 256);
    EXPECT_EQ(maps.normal[0], 10);
    EXPECT_EQ(maps.normal[255], 10 + 99);
    EXPECT_EQ(maps.quality[255], (250 + 255) & 0xFF);
}

TEST(PaletteEntry, PacksIndexRedGreenAndBlue) {
    EXPECT_EQ(paletteEntry(1, 2, 3, 4), 0x01020304u);
    EXPECT_EQ(paletteEntry(0x1FF, 0x102, 0x103, 0x104), 0xFF020304u);
}

TEST(BitmapPalette, TakesTheEvenColoursButTheLastForTheLast) {
    std::array<uint32_t, 256> colors;
    for (uint32_t i = 0; i < colors.size(); ++i)
        colors[i] = i * 0x010101;
    const std::vector<uint32_t> entries = bitmapPalette(colors);
    ASSERT_EQ(entries.size(), 128u);
    EXPECT_EQ(entries[0], 0x00000000u);
    EXPECT_EQ(entries[1], 0x01020202u);
    EXPECT_EQ(entries[126], 0x7EFCFCFCu);
    EXPECT_EQ(entries[127], 0x7FFFFFFFu);
}

TEST(BitmapPalette, IndexIsNotDisturbedByTheFourthByteOfAColour) {
    std::array<uint32_t, 256> colors;
    colors.fill(0xFF123456);
    EXPECT_EQ(bitmapPalette(colors)[2], 0x02123456u);
}

TEST(Pixels, AreHalved) {
    uint8_t pixels[] = {0, 1, 2, 255};
    halvePixels(pixels);
    EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 4), (std::vector<uint8_t>{0, 0, 1, 127}));
}

TEST(Rows, AreReversed) {
    uint8_t pixels[] = {1, 2, 3, 4, 5, 6};
    reverseRows(pixels, 2, 3);
    EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 6), (std::vector<uint8_t>{5, 6, 3, 4, 1, 2}));
    reverseRows(pixels, 3, 2);
    EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 6), (std::vector<uint8_t>{4, 1, 2, 5, 6, 3}));
}

}  // namespace
}  // namespace operations
