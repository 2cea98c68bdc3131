#include "simulator/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace simulator {
namespace {

std::vector<uint8_t> drawn(uint32_t width, uint32_t height, const Scene& scene) {
    std::vector<uint8_t> pixels(size_t{width} * height);
    drawPicture({width, height, pixels}, scene);
    return pixels;
}

double mean(const std::vector<uint8_t>& pixels) {
    return static_cast<double>(std::accumulate(pixels.begin(), pixels.end(), uint64_t{0})) /
           static_cast<double>(pixels.size());
}

double darkShare(const std::vector<uint8_t>& pixels) {
    const auto dark = std::count_if(pixels.begin(), pixels.end(), [](uint8_t level) { return level < 150; });
    return static_cast<double>(dark) / static_cast<double>(pixels.size());
}

TEST(PictureTest, FingerCoversTheMiddleAndLeavesTheEdgesBlank) {
    const std::vector<uint8_t> finger = drawn(240, 225, {PictureKind::Finger, 1, 250});
    EXPECT_GT(darkShare(finger), 0.1);
    EXPECT_LT(darkShare(finger), 0.45);
    for (uint32_t y = 0; y < 225; ++y) {
        ASSERT_GE(finger[y * 240], kBlankLevel - 6);
        ASSERT_GE(finger[y * 240 + 239], kBlankLevel - 6);
    }
}

TEST(PictureTest, SlapHasFourFingersSideBySide) {
    constexpr uint32_t kWidth = 480;
    constexpr uint32_t kHeight = 450;
    const std::vector<uint8_t> slap = drawn(kWidth, kHeight, {PictureKind::Slap, 2, 200});
    int fingers = 0;
    uint32_t blankColumns = 20;
    for (uint32_t x = 0; x < kWidth; ++x) {
        int dark = 0;
        for (uint32_t y = 200; y < 222; ++y) {
            dark += slap[y * kWidth + x] < 200 ? 1 : 0;
        }
        fingers += dark > 0 && blankColumns >= 8 ? 1 : 0;
        blankColumns = dark > 0 ? 0 : blankColumns + 1;
    }
    EXPECT_EQ(fingers, 4);
}

TEST(PictureTest, PalmAndHandAreCovered) {
    EXPECT_GT(darkShare(drawn(250, 250, {PictureKind::Palm, 3, 250})), 0.1);
    EXPECT_GT(darkShare(drawn(250, 400, {PictureKind::Hand, 3, 250})), 0.1);
}

TEST(PictureTest, EmptyPlatenIsBrightAndEvenAndDarkWithoutLight) {
    const std::vector<uint8_t> flat = drawn(300, 200, {PictureKind::Flat, 4, 500});
    EXPECT_GT(mean(flat), 180);
    EXPECT_EQ(std::count(flat.begin(), flat.end(), 255), 0);
    const std::vector<uint8_t> dark = drawn(300, 200, {PictureKind::Dark, 4, 500});
    EXPECT_LT(*std::max_element(dark.begin(), dark.end()), 16);
    EXPECT_GT(mean(dark), 1);
}

TEST(PictureTest, SameSceneSamePictureAnotherSeedAnotherPicture) {
    for (const PictureKind kind : {PictureKind::Finger, PictureKind::Slap, PictureKind::Palm, PictureKind::Hand,
                                   PictureKind::Flat, PictureKind::Dark}) {
        const std::vector<uint8_t> first = drawn(100, 90, {kind, 5, 250});
        EXPECT_EQ(drawn(100, 90, {kind, 5, 250}), first);
        EXPECT_NE(drawn(100, 90, {kind, 6, 250}), first);
    }
}

TEST(PictureTest, AnySizeIsDrawn) {
    for (const uint32_t width : {1u, 2u, 13u, 300u}) {
        for (const uint32_t height : {1u, 2u, 13u}) {
            for (const PictureKind kind : {PictureKind::Finger, PictureKind::Slap, PictureKind::Palm, PictureKind::Hand,
                                           PictureKind::Flat, PictureKind::Dark}) {
                EXPECT_EQ(drawn(width, height, {kind, 7, 1200}).size(), size_t{width} * height);
            }
        }
    }
}

}  // namespace
}  // namespace simulator
