#include "simulator/noise.h"

#include <gtest/gtest.h>

#include <cmath>

namespace simulator {
namespace {

TEST(NoiseTest, StaysBelowOneAndSpreadsEvenly) {
    int above = 0;
    for (int32_t i = 0; i < 10'000; ++i) {
        const float value = noiseAt(7, i - 5000, i * 3);
        ASSERT_GE(value, 0.0F);
        ASSERT_LT(value, 1.0F);
        above += value >= 0.5F ? 1 : 0;
    }
    EXPECT_NEAR(above, 5000, 300);
}

TEST(NoiseTest, SeedAndEachCoordinateMatter) {
    EXPECT_EQ(noiseAt(1, 2, 3), noiseAt(1, 2, 3));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(2, 2, 3));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(1, 3, 3));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(1, 2, 4));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(1, 3, 2));
}

TEST(NoiseTest, SmoothNoiseMeetsTheWholePlacesWithoutSteps) {
    EXPECT_EQ(smoothNoiseAt(5, -2, 3), noiseAt(5, -2, 3));
    for (int i = -300; i < 300; ++i) {
        const float x = static_cast<float>(i) / 100;
        EXPECT_LT(std::abs(smoothNoiseAt(5, x, 0.5F) - smoothNoiseAt(5, x + 0.01F, 0.5F)), 0.02F) << x;
    }
}

TEST(RandomTest, RepeatsWithTheSeedAndKeepsItsRange) {
    Random first(3);
    Random second(3);
    Random other(4);
    EXPECT_NE(Random(3).next(), other.next());
    for (int i = 0; i < 1000; ++i) {
        const float value = first.within(-2, 5);
        EXPECT_EQ(value, second.within(-2, 5));
        EXPECT_GE(value, -2);
        EXPECT_LT(value, 5);
    }
}

}  // namespace
}  // namespace simulator
