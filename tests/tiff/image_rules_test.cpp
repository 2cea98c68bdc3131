#include "tiff/image_rules.h"

#include <gtest/gtest.h>

#include <limits>

namespace tifffile {
namespace {

TEST(ImageRules, ByteCountIsWidthTimesHeight) {
    EXPECT_EQ(imageByteCount(3, 7), 21u);
}

TEST(ImageRules, ByteCountFitsIntoAResult) {
    EXPECT_EQ(imageByteCount(2147483647, 1), 2147483647u);
    EXPECT_EQ(imageByteCount(0x80000000, 1), 0u);
    EXPECT_EQ(imageByteCount(0x10000, 0x10001), 0u);
}

TEST(ImageRules, NoPixelsNoBytes) {
    EXPECT_EQ(imageByteCount(0, 7), 0u);
    EXPECT_EQ(imageByteCount(3, 0), 0u);
}

TEST(ImageRules, UncompressedImageIsNotLargerThanItsFile) {
    EXPECT_TRUE(canHold(1000, 1000, expansionOf(1)));
    EXPECT_FALSE(canHold(999, 1000, expansionOf(1)));
}

TEST(ImageRules, OtherCompressionsAreNotRead) {
    for (const uint64_t compression : {0, 2, 4, 6, 7, 9, 34712})
        EXPECT_EQ(expansionOf(compression), 0u) << compression;
}

TEST(ImageRules, DotsPerInchAreRounded) {
    EXPECT_EQ(dotsPerInch(499.5, ResolutionUnit::inch), 500);
    EXPECT_EQ(dotsPerInch(499.4, ResolutionUnit::inch), 499);
    EXPECT_EQ(dotsPerInch(196.85, ResolutionUnit::centimeter), 500);
}

TEST(ImageRules, NoDotsPerInchWithoutUnit) {
    EXPECT_EQ(dotsPerInch(500, ResolutionUnit::none), 0);
}

TEST(ImageRules, NoDotsPerInchOutOfRange) {
    EXPECT_EQ(dotsPerInch(65535.4, ResolutionUnit::inch), 65535);
    EXPECT_EQ(dotsPerInch(65535.5, ResolutionUnit::inch), 0);
    EXPECT_EQ(dotsPerInch(-1, ResolutionUnit::inch), 0);
    EXPECT_EQ(dotsPerInch(std::numeric_limits<double>::quiet_NaN(), ResolutionUnit::inch), 0);
    EXPECT_EQ(dotsPerInch(std::numeric_limits<double>::infinity(), ResolutionUnit::inch), 0);
}

}  // namespace
}  // namespace tifffile
