#include "console/tokenizer.h"

#include "console/console_state.h"
#include "support/tester_test.h"

namespace console {
namespace {

class Tokenizer : public support::TesterTest {
protected:
    // Makes this the line being run; it lives as long as the test.
    void line(const std::string& content) {
        text = content;
        beginLine(text.data());
    }

    // As inside a script whose first parameter is "first" and whose second is not given, and so on.
    static void enterScript() {
        state.depth = 1;
        state.script = std::tmpfile();
        state.levels[1].parameters[0] = "first";
        state.levels[1].parameters[9] = "tenth";
    }

    std::string text;
};

TEST_F(Tokenizer, WordsAreSeparatedByBlankTabAndNewline) {
    line("  one\ttwo\n three ");
    EXPECT_STREQ(nextWord(), "one");
    EXPECT_STREQ(nextWord(), "two");
    EXPECT_STREQ(nextWord(), "three");
    EXPECT_EQ(nextWord(), nullptr);
    EXPECT_EQ(nextWord(), nullptr);
}

TEST_F(Tokenizer, QuotesDoNotJoinWords) {
    line("\"a b\"");
    EXPECT_STREQ(nextWord(), "\"a");
    EXPECT_STREQ(nextWord(), "b\"");
}

TEST_F(Tokenizer, NoLineHasNoWords) {
    EXPECT_EQ(nextWord(), nullptr);
}

TEST_F(Tokenizer, MissingMandatoryArgumentSetsTheFlag) {
    line("");
    EXPECT_EQ(nextArgument(kMandatory), nullptr);
    EXPECT_EQ(state.missingParameter, 1);
}

TEST_F(Tokenizer, MissingOptionalArgumentClearsTheFlag) {
    line("");
    state.missingParameter = 1;
    EXPECT_EQ(nextArgument(kOptional), nullptr);
    EXPECT_EQ(state.missingParameter, 0);
}

TEST_F(Tokenizer, PresentArgumentClearsTheFlag) {
    line("word");
    state.missingParameter = 1;
    EXPECT_STREQ(nextArgument(kMandatory), "word");
    EXPECT_EQ(state.missingParameter, 0);
}

TEST_F(Tokenizer, ReferencesAreOnlyReplacedInScripts) {
    line("%1");
    EXPECT_STREQ(nextArgument(kMandatory), "%1");
}

TEST_F(Tokenizer, ReferencesOneToTenStandForTheScriptsParameters) {
    enterScript();
    line("%1 %10 %2x %1x");
    EXPECT_STREQ(nextArgument(kMandatory), "first");
    EXPECT_STREQ(nextArgument(kMandatory), "tenth");
    EXPECT_EQ(nextArgument(kOptional), nullptr);
    EXPECT_STREQ(nextArgument(kMandatory), "first");
}

TEST_F(Tokenizer, AbsentParameterCountsAsMissingArgument) {
    enterScript();
    line("%2 word");
    EXPECT_EQ(nextArgument(kMandatory), nullptr);
    EXPECT_EQ(state.missingParameter, 1);
}

TEST_F(Tokenizer, NumbersOutsideOneToTenAreNoParameters) {
    enterScript();
    for (const char* word : {"%0", "%11", "%%", "%", "%x", "%-1", "%99999999999999999999"}) {
        line(word);
        EXPECT_EQ(nextArgument(kOptional), nullptr) << word;
    }
}

TEST_F(Tokenizer, OnlyWholeWordsAreReplaced) {
    enterScript();
    line("a%1");
    EXPECT_STREQ(nextArgument(kMandatory), "a%1");
}

TEST(Numbers, AreReadInBaseZero) {
    EXPECT_EQ(toUnsigned("31"), 31u);
    EXPECT_EQ(toUnsigned("0x1F"), 31u);
    EXPECT_EQ(toUnsigned("037"), 31u);
    EXPECT_EQ(toSigned("-0x10"), -16);
}

TEST(Numbers, TooWideAreCutToTheWidth) {
    EXPECT_EQ(toUnsigned("0xffffffff"), 0xFFFFFFFFu);
    EXPECT_EQ(toUnsigned("0x100000001"), 1u);
    EXPECT_EQ(toUnsigned("-1"), 0xFFFFFFFFu);
}

TEST(Numbers, WordsReadAsZeroAndTrailingTextIsIgnored) {
    EXPECT_EQ(toUnsigned("word"), 0u);
    EXPECT_EQ(toUnsigned("12abc"), 12u);
    EXPECT_EQ(toSigned(""), 0);
}

}  // namespace
}  // namespace console
