#include "simulator/image_store.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

Image ofSize(uint32_t width, uint32_t height) {
    Image image;
    image.info.width = width;
    image.info.height = height;
    image.info.pitch = width;
    return image;
}

TEST(ImageStoreTest, EachPartOfTheKeyTellsImagesApart) {
    ImageStore store(100);
    EXPECT_TRUE(store.put({1, 2, 3}, ofSize(1, 1)));
    EXPECT_NE(store.find({1, 2, 3}), nullptr);
    EXPECT_EQ(store.find({2, 2, 3}), nullptr);
    EXPECT_EQ(store.find({1, 1, 3}), nullptr);
    EXPECT_EQ(store.find({1, 2, 2}), nullptr);
}

TEST(ImageStoreTest, MemoryIsFullToTheByte) {
    ImageStore store(100);
    EXPECT_TRUE(store.put({1, 1, 1}, ofSize(60, 1)));
    EXPECT_FALSE(store.put({2, 1, 1}, ofSize(41, 1)));
    EXPECT_TRUE(store.put({2, 1, 1}, ofSize(40, 1)));
    EXPECT_FALSE(store.put({3, 1, 1}, ofSize(1, 1)));
    EXPECT_EQ(store.usedMemory(), 100u);
}

TEST(ImageStoreTest, ANewImageTakesThePlaceAndMemoryOfTheOld) {
    ImageStore store(100);
    store.put({1, 1, 1}, ofSize(60, 1));
    store.put({2, 1, 1}, ofSize(10, 1));
    EXPECT_TRUE(store.hasRoom({1, 1, 1}, 90));
    EXPECT_FALSE(store.hasRoom({1, 1, 1}, 91));
    EXPECT_TRUE(store.put({1, 1, 1}, ofSize(9, 10)));
    EXPECT_EQ(store.usedMemory(), 100u);
    EXPECT_FALSE(store.put({1, 1, 1}, ofSize(91, 1)));
    EXPECT_EQ(store.find({1, 1, 1})->info.height, 10u);
}

TEST(ImageStoreTest, ErasingGivesTheMemoryBackOnce) {
    ImageStore store(100);
    store.put({1, 1, 1}, ofSize(60, 1));
    EXPECT_TRUE(store.erase({1, 1, 1}));
    EXPECT_FALSE(store.erase({1, 1, 1}));
    EXPECT_EQ(store.usedMemory(), 0u);
    store.put({1, 1, 1}, ofSize(60, 1));
    store.clear();
    EXPECT_EQ(store.usedMemory(), 0u);
    EXPECT_EQ(store.find({1, 1, 1}), nullptr);
}

TEST(ImageStoreTest, ImpossibleImagesAreDescribedAndTakeNothing) {
    ImageStore store(100);
    EXPECT_TRUE(store.put({1, 1, 1}, ofSize(0, 10)));
    EXPECT_TRUE(store.put({2, 1, 1}, ofSize(101, 1)));
    EXPECT_TRUE(store.put({3, 1, 1}, ofSize(0xFFFFFFFF, 0xFFFFFFFF)));
    EXPECT_EQ(store.usedMemory(), 0u);
    EXPECT_EQ(store.find({3, 1, 1})->info.byteCount(), 0xFFFFFFFEull << 32 | 1);
    for (uint32_t handle = 1; handle <= 4; ++handle) {
        EXPECT_TRUE(store.pixels({handle, 1, 1}).empty());
    }
}

TEST(ImageStoreTest, ThereAreOnlySoManyImages) {
    ImageStore store(0);
    for (uint32_t i = 0; i < ImageStore::kMostImages; ++i) {
        EXPECT_TRUE(store.put({i, 1, 1}, ofSize(0, 0)));
    }
    EXPECT_FALSE(store.put({1000, 1, 1}, ofSize(0, 0)));
    EXPECT_TRUE(store.put({5, 1, 1}, ofSize(0, 0)));
}

TEST(ImageStoreTest, PixelsAreDrawnOnceAndLoadedOnesStayAsTheyAre) {
    ImageStore store(10'000);
    Image drawn = ofSize(40, 30);
    drawn.scene = Scene{PictureKind::Finger, 5, 500};
    store.put({1, 1, 1}, drawn);
    const auto pixels = store.pixels({1, 1, 1});
    ASSERT_EQ(pixels.size(), 1200u);
    EXPECT_EQ(store.pixels({1, 1, 1}).data(), pixels.data());
    std::vector<uint8_t> expected(1200);
    drawPicture({40, 30, expected}, *drawn.scene);
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), expected.begin()));

    Image loaded = ofSize(2, 1);
    loaded.pixels = {7, 8};
    store.put({2, 1, 1}, loaded);
    EXPECT_EQ(store.pixels({2, 1, 1})[1], 8);
}

}  // namespace
}  // namespace simulator
