#include "simulator/image_quality.h"

#include <gtest/gtest.h>

#include <vector>

namespace simulator {
namespace {

// Five areas of 20 times 20 pixels side by side, each striped with two levels.
std::vector<uint8_t> stripes(const std::vector<std::pair<uint8_t, uint8_t>>& areas) {
    std::vector<uint8_t> pixels;
    for (size_t y = 0; y < 20; ++y) {
        for (const auto& [even, odd] : areas) {
            pixels.insert(pixels.end(), 20, y % 2 == 0 ? even : odd);
        }
    }
    return pixels;
}

TEST(CaptureQualityTest, AreasAreToldApart) {
    const auto pixels = stripes({{246, 240}, {60, 240}, {20, 120}, {180, 255}, {150, 190}});
    const CaptureQuality quality = measureCapture(100, pixels);
    EXPECT_EQ(quality.contactArea, 80);
    EXPECT_EQ(quality.goodArea, 20);
    EXPECT_EQ(quality.darkArea, 20);
    EXPECT_EQ(quality.lightArea, 20);
    EXPECT_EQ(quality.smearArea, 20);
    EXPECT_EQ(quality.coverFactor, 25);
}

TEST(CaptureQualityTest, BlankAndTinyPicturesHaveNothingToMeasure) {
    EXPECT_EQ(measureCapture(20, std::vector<uint8_t>(400, 240)).contactArea, 0);
    EXPECT_EQ(measureCapture(20, std::vector<uint8_t>(400, 240)).coverFactor, 0);
    EXPECT_EQ(measureCapture(19, std::vector<uint8_t>(361, 0)).contactArea, 0);
    EXPECT_EQ(measureCapture(0, {}).contactArea, 0);
}

TEST(PlatenQualityTest, DirtAndDamageAreBelowThreeQuartersAndAQuarterOfThePeak) {
    std::vector<uint8_t> pixels(100, 200);
    pixels[0] = 150;  // neither
    pixels[1] = 149;
    pixels[2] = 50;
    pixels[3] = 49;
    const PlatenQuality quality = measurePlaten(pixels);
    EXPECT_EQ(quality.totalPixels, 100u);
    EXPECT_EQ(quality.peakLevel, 200u);
    EXPECT_EQ(quality.dirtyPixels, 2u);
    EXPECT_EQ(quality.damagedPixels, 1u);
    EXPECT_EQ(measurePlaten({}).totalPixels, 0u);
}

}  // namespace
}  // namespace simulator
