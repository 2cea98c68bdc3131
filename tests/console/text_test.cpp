#include "console/text.h"

#include <gtest/gtest.h>

namespace console {
namespace {

TEST(Text, IsEqualWhateverTheCase) {
    EXPECT_TRUE(equalIgnoringCase("aBc-1", "AbC-1"));
    EXPECT_TRUE(equalIgnoringCase("", ""));
}

TEST(Text, OfAnotherLengthOrLetterDiffers) {
    EXPECT_FALSE(equalIgnoringCase("abc", "ab"));
    EXPECT_FALSE(equalIgnoringCase("ab", "abc"));
    EXPECT_FALSE(equalIgnoringCase("abc", "abd"));
    EXPECT_FALSE(equalIgnoringCase("[", "{"));
}

}  // namespace
}  // namespace console
