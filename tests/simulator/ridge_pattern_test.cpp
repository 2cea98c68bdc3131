#include "simulator/ridge_pattern.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace simulator {
namespace {

constexpr uint8_t kGround = kBlankLevel - 6;  // the darkest that grain makes of nothing

struct Picture {
    Picture(uint32_t w, uint32_t h) : width(w), height(h), pixels(size_t{w} * h) { drawBlank(view(), 1); }
    GrayView view() { return {width, height, pixels}; }
    uint8_t at(uint32_t x, uint32_t y) const { return pixels[size_t{y} * width + x]; }

    uint32_t width;
    uint32_t height;
    std::vector<uint8_t> pixels;
};

// A round area of level ridges in the middle of a picture of 400 times 400.
RidgePatch levelPatch() {
    RidgePatch patch;
    patch.centre = {200, 200};
    patch.halfWidth = 150;
    patch.halfHeight = 150;
    patch.seed = 11;
    return patch;
}

Picture drawn(const RidgePatch& patch) {
    Picture picture(400, 400);
    drawRidges(picture.view(), patch);
    return picture;
}

// Pixels from one ridge to the next, going down or across through the middle of the area.
double meanPeriod(const Picture& picture, bool isDown) {
    int crossings = 0;
    for (uint32_t line = 150; line < 250; ++line) {
        bool isDark = false;
        for (uint32_t i = 110; i < 290; ++i) {
            const uint8_t level = isDown ? picture.at(line, i) : picture.at(i, line);
            // Two thresholds, so that grain and pores are not counted.
            const bool now = isDark ? level < 170 : level < 110;
            crossings += now && !isDark ? 1 : 0;
            isDark = now;
        }
    }
    return crossings == 0 ? 1e9 : 100.0 * 180 / crossings;
}

TEST(RidgePatternTest, BlankIsBrightWithALittleGrain) {
    const Picture picture(50, 40);
    const auto [least, most] = std::minmax_element(picture.pixels.begin(), picture.pixels.end());
    EXPECT_GE(*least, kGround);
    EXPECT_LE(*most, kBlankLevel);
    EXPECT_LT(*least, *most);
}

TEST(RidgePatternTest, RidgesAreDarkAndTheGroundAroundStaysBlank) {
    const Picture picture = drawn(levelPatch());
    EXPECT_LT(*std::min_element(picture.pixels.begin(), picture.pixels.end()), 90);
    for (uint32_t y = 0; y < 400; ++y) {
        for (uint32_t x = 0; x < 400; ++x) {
            ASSERT_LE(picture.at(x, y), kBlankLevel);
            if (std::hypot(x - 200.0, y - 200.0) > 185) {
                ASSERT_GE(picture.at(x, y), kGround) << x << " " << y;
            }
        }
    }
}

TEST(RidgePatternTest, RidgesAndValleysTakeAboutTheSameRoom) {
    const Picture picture = drawn(levelPatch());
    int dark = 0;
    for (uint32_t y = 130; y < 270; ++y) {
        for (uint32_t x = 130; x < 270; ++x) {
            dark += picture.at(x, y) < 160 ? 1 : 0;
        }
    }
    EXPECT_NEAR(100.0 * dark / (140 * 140), 50, 20);
}

TEST(RidgePatternTest, PeriodIsThatOfThePatch) {
    for (const float period : {8.0F, 9.0F, 18.0F}) {
        RidgePatch patch = levelPatch();
        patch.period = period;
        EXPECT_NEAR(meanPeriod(drawn(patch), true), period, 0.15 * period);
    }
}

TEST(RidgePatternTest, RidgesFollowTheAngle) {
    RidgePatch patch = levelPatch();
    EXPECT_GT(meanPeriod(drawn(patch), false), 40);
    patch.flow.angle = std::numbers::pi_v<float> / 2;
    const Picture upright = drawn(patch);
    EXPECT_NEAR(meanPeriod(upright, false), 9, 1.4);
    EXPECT_GT(meanPeriod(upright, true), 40);
}

// Around the two cores of a whorl the ridges are circles: they cross a line through its middle either way.
TEST(RidgePatternTest, RidgesTurnAroundCores) {
    RidgePatch patch = levelPatch();
    patch.flow.cores = {{200, 195}, {200, 205}};
    patch.flow.angle = std::numbers::pi_v<float> / 2;
    const Picture whorl = drawn(patch);
    int down = 0;
    int across = 0;
    for (uint32_t i = 100; i < 300; ++i) {
        down += whorl.at(200, i) < 110 && whorl.at(200, i - 1) >= 110 ? 1 : 0;
        across += whorl.at(i, 200) < 110 && whorl.at(i - 1, 200) >= 110 ? 1 : 0;
    }
    EXPECT_GE(down, 14);
    EXPECT_GE(across, 14);
}

TEST(RidgePatternTest, SameSeedSamePictureAnotherSeedAnotherPicture) {
    RidgePatch patch = levelPatch();
    const std::vector<uint8_t> first = drawn(patch).pixels;
    EXPECT_EQ(drawn(patch).pixels, first);
    patch.seed = 12;
    EXPECT_NE(drawn(patch).pixels, first);
}

TEST(RidgePatternTest, CreaseLeavesABrightLine) {
    RidgePatch patch = levelPatch();
    patch.flow.angle = 1;
    const std::vector<uint8_t> plain = drawn(patch).pixels;
    patch.creases = {{{100, 200}, {200, 200}, {300, 200}, 24}};
    const Picture picture = drawn(patch);
    int bright = 0;
    int before = 0;
    for (uint32_t x = 130; x < 270; ++x) {
        bright += picture.at(x, 200) >= kGround ? 1 : 0;
        before += plain[200 * 400 + x] >= kGround ? 1 : 0;
    }
    EXPECT_GT(bright, 100);
    EXPECT_LT(before, 80);
}

TEST(RidgePatternTest, WhatLiesOutsideThePictureIsLeftOut) {
    RidgePatch patch = levelPatch();
    patch.centre = {0, 390};
    const Picture corner = drawn(patch);
    EXPECT_LT(*std::min_element(corner.pixels.begin(), corner.pixels.end()), 90);
    for (const Point centre : {Point{-400, 200}, Point{200, 800}, Point{1e6F, 0}}) {
        patch.centre = centre;
        EXPECT_EQ(drawn(patch).pixels, Picture(400, 400).pixels);
    }
}

TEST(RidgePatternTest, NothingIsDrawnWithoutAnExtentOrWithRidgesTooFine) {
    RidgePatch patch = levelPatch();
    patch.period = 1.9F;
    EXPECT_EQ(drawn(patch).pixels, Picture(400, 400).pixels);
    patch = levelPatch();
    patch.halfWidth = 0;
    EXPECT_EQ(drawn(patch).pixels, Picture(400, 400).pixels);
}

TEST(RidgePatternTest, PatchesOfAnySizeStayWithinThePicture) {
    for (const uint32_t size : {1u, 2u, 3u, 7u, 20u, 33u}) {
        for (const float half : {0.5F, 3.0F, 40.0F}) {
            Picture picture(size, size);
            RidgePatch patch = levelPatch();
            patch.centre = {static_cast<float>(size) / 2, static_cast<float>(size) / 2};
            patch.halfWidth = half;
            patch.halfHeight = half;
            patch.creases = {{{-50, -50}, {5, 5}, {60, 60}, 9}};
            drawRidges(picture.view(), patch);
            EXPECT_LE(*std::max_element(picture.pixels.begin(), picture.pixels.end()), kBlankLevel);
        }
    }
}

}  // namespace
}  // namespace simulator
