#include "operations/number_format.h"

#include <gtest/gtest.h>

namespace operations {
namespace {

std::string shown(const char* format, uint32_t number) {
    const auto parsed = NumberFormat::parse(format);
    return parsed ? parsed->format(number) : "refused";
}

TEST(NumberFormat, TakesEveryIntegerConversion) {
    EXPECT_EQ(shown("%d", 0xFFFFFFFF), "-1");
    EXPECT_EQ(shown("%i", 7), "7");
    EXPECT_EQ(shown("%u", 0xFFFFFFFF), "4294967295");
    EXPECT_EQ(shown("%x", 0xABC), "abc");
    EXPECT_EQ(shown("%X", 0xABC), "ABC");
    EXPECT_EQ(shown("%o", 8), "10");
    EXPECT_EQ(shown("%c", 'A'), "A");
}

TEST(NumberFormat, TakesALongForWhatItIs) {
    EXPECT_EQ(shown("%ld", 0xFFFFFFFF), "-1");
    EXPECT_EQ(shown("all: %08lX!", 0xBEEF), "all: 0000BEEF!");
    EXPECT_EQ(shown("%lc", 'A'), "A");
}

TEST(NumberFormat, TakesFlagsWidthPrecisionAndTextAround) {
    EXPECT_EQ(shown("<%08x>", 0xBEEF), "<0000beef>");
    EXPECT_EQ(shown("%-5d|", 42), "42   |");
    EXPECT_EQ(shown("%#x", 255), "0xff");
    EXPECT_EQ(shown("%+.3d", 5), "+005");
    EXPECT_EQ(shown("100%%=%d", 5), "100%=5");
}

TEST(NumberFormat, TakesTextWithoutConversion) {
    EXPECT_EQ(shown("x", 5), "x");
    EXPECT_EQ(shown("%%", 5), "%");
}

TEST(NumberFormat, RefusesMoreThanOneConversion) {
    EXPECT_EQ(shown("%d %d", 5), "refused");
    EXPECT_EQ(shown("%d%%%x", 5), "refused");
}

TEST(NumberFormat, RefusesWhatWouldReadSomethingElse) {
    for (const char* format : {"%s", "%n", "%f", "%p", "%*d", "%.*d", "%lld", "%hd", "%hhd", "%l", "%", "%5", "%-",
                               "%.", "%5.3", "%5%", "%d%"})
        EXPECT_EQ(shown(format, 5), "refused") << format;
}

TEST(NumberFormat, TakesThreeDigitsOfWidthAndRefusesFour) {
    EXPECT_EQ(shown("%999d", 5).size(), 999u);
    EXPECT_EQ(shown("%1000d", 5), "refused");
    EXPECT_EQ(shown("%.999d", 5).size(), 999u);
    EXPECT_EQ(shown("%.1000d", 5), "refused");
}

}  // namespace
}  // namespace operations
