#include <gtest/gtest.h>

#include "platform/posix/completion.h"

namespace {

using platform::completeWord;

constexpr const char* kWords[] = {"CAPture_Finger", "capf", "CAPture_Slap", "Wait", "wait", "Tag"};

std::string candidates(std::string_view typed) {
    std::string names;
    for (const char* candidate : completeWord(typed, kWords).candidates) {
        names += std::string(candidate) + ",";
    }
    return names;
}

TEST(Completion, OneCandidateIsTheWordAndABlank) {
    EXPECT_EQ(completeWord("Ta", kWords).text, "Tag ");
}

TEST(Completion, CaseDoesNotMatter) {
    EXPECT_EQ(completeWord("CAPTURE_f", kWords).text, "CAPture_Finger ");
}

TEST(Completion, SeveralCandidatesGiveWhatTheyHaveInCommon) {
    EXPECT_EQ(completeWord("capt", kWords).text, "CAPture_");
    EXPECT_EQ(candidates("capt"), "CAPture_Finger,CAPture_Slap,");
}

TEST(Completion, NothingMoreInCommonLeavesTheLength) {
    EXPECT_EQ(completeWord("cap", kWords).text.size(), 3u);
    EXPECT_EQ(candidates("cap"), "CAPture_Finger,capf,CAPture_Slap,");
}

TEST(Completion, WordsThatDifferInCaseAloneAreOne) {
    EXPECT_EQ(completeWord("w", kWords).text, "Wait ");
}

TEST(Completion, AWholeWordIsItsOwnCandidate) {
    EXPECT_EQ(completeWord("tag", kWords).text, "Tag ");
}

TEST(Completion, NoCandidateLeavesWhatWasTyped) {
    EXPECT_EQ(completeWord("Tagg", kWords).text, "Tagg");
    EXPECT_EQ(candidates("Tagg"), "");
}

TEST(Completion, NothingTypedMeansEveryWord) {
    EXPECT_EQ(completeWord("", kWords).text, "");
    EXPECT_EQ(candidates(""), "CAPture_Finger,capf,CAPture_Slap,Wait,Tag,");
}

TEST(Completion, NoWordsNoCandidates) {
    EXPECT_EQ(completeWord("x", {}).text, "x");
}

}  // namespace
