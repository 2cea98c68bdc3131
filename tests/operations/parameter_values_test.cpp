#include "operations/parameter_values.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace operations {
namespace {

class Values : public ::testing::Test {
protected:
    // Adds the words until one is refused; returns how many words of the set there are.
    size_t add(std::initializer_list<const char*> words, LongText longText = LongText::refuse) {
        ParameterValues values(buffer, longText);
        for (const char* word : words)
            if (!values.add(word))
                break;
        return values.count();
    }

    std::string bytes(size_t firstWord, size_t count) const {
        return {reinterpret_cast<const char*>(buffer.data() + firstWord), count};
    }

    std::array<uint32_t, 16> buffer{};
};

TEST_F(Values, AreNumbersInBaseZeroBehindTheSetNumber) {
    EXPECT_EQ(add({"13", "0x10", "010", "-1", "x"}), 5u);
    EXPECT_EQ(buffer[0], 13u);
    EXPECT_EQ(buffer[1], 16u);
    EXPECT_EQ(buffer[2], 8u);
    EXPECT_EQ(buffer[3], 0xFFFFFFFFu);
    EXPECT_EQ(buffer[4], 0u);
}

TEST_F(Values, OfTheIdentitySetBeginWithThreeTexts) {
    EXPECT_EQ(add({"0", "abcdefg", "123456789012345", "", "7"}), 12u);
    EXPECT_EQ(bytes(1, 8), std::string("abcdefg\0", 8));
    EXPECT_EQ(bytes(3, 16), std::string("123456789012345\0", 16));
    EXPECT_EQ(bytes(7, 16), std::string(16, '\0'));
    EXPECT_EQ(buffer[11], 7u);
}

TEST_F(Values, TypedTextThatIsTooLongEndsTheReading) {
    EXPECT_EQ(add({"0", "abcdefgh", "x"}), 1u);
    EXPECT_EQ(add({"0", "abc", "1234567890123456", "x"}), 3u);
    EXPECT_EQ(add({"0", "abc", "x", "1234567890123456", "5"}), 7u);
}

TEST_F(Values, TextOfAFileThatIsTooLongIsCut) {
    EXPECT_EQ(add({"0", "abcdefghij", "12345678901234567890", "x", "9"}, LongText::cut), 12u);
    EXPECT_EQ(bytes(1, 8), std::string("abcdefg\0", 8));
    EXPECT_EQ(bytes(3, 16), std::string("123456789012345\0", 16));
    EXPECT_EQ(buffer[11], 9u);
}

TEST_F(Values, OfOtherSetsHaveNoTexts) {
    EXPECT_EQ(add({"1", "0", "abc"}), 3u);
    EXPECT_EQ(buffer[2], 0u);
}

TEST_F(Values, EndWhereTheRoomEnds) {
    ParameterValues values(buffer, LongText::cut);
    for (size_t i = 0; i < buffer.size(); ++i)
        EXPECT_TRUE(values.add("1"));
    EXPECT_FALSE(values.add("1"));
    EXPECT_EQ(values.count(), buffer.size());
}

TEST_F(Values, TextsNeedRoomForTheirWholeField) {
    ParameterValues values(std::span<uint32_t>(buffer).first(6), LongText::cut);
    EXPECT_TRUE(values.add("0"));
    EXPECT_TRUE(values.add("a"));
    EXPECT_FALSE(values.add("b"));
    EXPECT_EQ(values.count(), 3u);
}

}  // namespace
}  // namespace operations
