#include "operations/value_file.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/files.h"

namespace operations {
namespace {

class ValueFile : public ::testing::Test {
protected:
    std::string write(const std::string& bytes) {
        support::writeFile(folder.file("values"), bytes);
        return folder.file("values");
    }

    std::vector<std::string> words(const std::string& bytes) {
        std::vector<std::string> seen;
        EXPECT_TRUE(readValueWords(write(bytes), [&](const char* word) {
            seen.push_back(word);
            return true;
        }));
        return seen;
    }

    support::TemporaryFolder folder;
};

TEST_F(ValueFile, ThatBeginsWithAsciiInAnyCaseIsText) {
    EXPECT_EQ(valueForm(write("ASCII\n")), ValueForm::text);
    EXPECT_EQ(valueForm(write("ascii parameters\n")), ValueForm::text);
    EXPECT_EQ(valueForm(write("aScIi")), ValueForm::text);
}

TEST_F(ValueFile, MayHaveTheMarkOfItsEncodingBeforeAscii) {
    EXPECT_EQ(valueForm(write("\xEF\xBB\xBF"
                              "ASCII\n")),
              ValueForm::text);
    EXPECT_EQ(valueForm(write("\xEF\xBB"
                              "ASCII\n")),
              ValueForm::binary);
    EXPECT_EQ(valueForm(write("\xEF\xBB\xBF"
                              "12")),
              ValueForm::binary);
    EXPECT_EQ(words("\xEF\xBB\xBF"
                    "ASCII\n1 2\n"),
              (std::vector<std::string>{"1", "2"}));
}

TEST_F(ValueFile, OfAnythingElseIsBinary) {
    EXPECT_EQ(valueForm(write("ASCI\n")), ValueForm::binary);
    EXPECT_EQ(valueForm(write(" ASCII\n")), ValueForm::binary);
    EXPECT_EQ(valueForm(write("")), ValueForm::binary);
    EXPECT_EQ(valueForm(write("bM")), ValueForm::binary);
}

TEST_F(ValueFile, ThatBeginsWithTwoCapitalsIsABitmap) {
    EXPECT_EQ(valueForm(write("BM")), ValueForm::bitmap);
    EXPECT_EQ(valueForm(write("BMsomething")), ValueForm::bitmap);
}

TEST_F(ValueFile, ThatIsMissingOrAFolderIsUnreadable) {
    EXPECT_EQ(valueForm(folder.file("none")), ValueForm::unreadable);
    EXPECT_EQ(valueForm(folder.path().string()), ValueForm::unreadable);
    EXPECT_FALSE(readValueWords(folder.file("none"), [](const char*) { return true; }));
    uint8_t byte = 0;
    EXPECT_EQ(readValueBytes(folder.file("none"), {&byte, 1}), 0u);
}

TEST_F(ValueFile, WordsFollowTheFirstLine) {
    EXPECT_EQ(words("ASCII 1 2\n3 4\t5\n\n 6\n"), (std::vector<std::string>{"3", "4", "5", "6"}));
    EXPECT_EQ(words("ASCII"), std::vector<std::string>{});
}

TEST_F(ValueFile, WordThatBeginsWithASemicolonEndsItsLine) {
    EXPECT_EQ(words("ASCII\n1 2 ;3 4\n;5\n6 ; 7\n8"), (std::vector<std::string>{"1", "2", "6", "8"}));
    EXPECT_EQ(words("ASCII\n1;2 3\n"), (std::vector<std::string>{"1;2", "3"}));
}

TEST_F(ValueFile, CarriageReturnsSeparate) {
    EXPECT_EQ(words("ASCII\r\n1 2\r\n3\r\n"), (std::vector<std::string>{"1", "2", "3"}));
}

TEST_F(ValueFile, OldMarkOfTheEndEndsTheText) {
    EXPECT_EQ(words("ASCII\r\n1 2\r\n\x1A"), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(words("ASCII\n1 2\x1A 3\n4"), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(words("ASCII\n1 ; 2\x1A\n4"), std::vector<std::string>{"1"});
    EXPECT_EQ(words("ASCII\x1A\n4"), std::vector<std::string>{});
}

TEST_F(ValueFile, LongLinesAreReadWhole) {
    std::string line;
    for (int i = 0; i < 2000; ++i)
        line += std::to_string(i) + " ";
    const std::vector<std::string> seen = words("ASCII\n" + line + "\nlast");
    ASSERT_EQ(seen.size(), 2001u);
    EXPECT_EQ(seen[1999], "1999");
    EXPECT_EQ(seen[2000], "last");
}

TEST_F(ValueFile, WordsAreCutAt1024Characters) {
    EXPECT_EQ(words("ASCII\n" + std::string(5000, '1') + " 2"),
              (std::vector<std::string>{std::string(1024, '1'), "2"}));
}

TEST_F(ValueFile, ReadingStopsWhenTheVisitorHasEnough) {
    int seen = 0;
    readValueWords(write("ASCII\n1 2 3"), [&](const char*) { return ++seen < 2; });
    EXPECT_EQ(seen, 2);
}

TEST_F(ValueFile, BytesAreReadAsFarAsTheBufferReaches) {
    uint8_t buffer[4] = {};
    EXPECT_EQ(readValueBytes(write("abcdef"), buffer), 4u);
    EXPECT_EQ(std::string(buffer, buffer + 4), "abcd");
    EXPECT_EQ(readValueBytes(write("xy"), buffer), 2u);
}

}  // namespace
}  // namespace operations
