// Standard input is a terminal: lines and keys.
#include <gtest/gtest.h>

#include "support/files.h"
#include "support/pty_session.h"

namespace {

using support::PtySession;
using support::RunOptions;

constexpr const char* kUp = "\x1b[A";
constexpr const char* kLeft = "\x1b[D";

RunOptions onTerminal(const std::string& type, const std::string& locale = "C") {
    RunOptions options;
    options.environment = {{"TERM", type}, {"LC_ALL", locale}};
    return options;
}

// Types the line and expects it to be read, with the next prompt behind it.
::testing::AssertionResult reads(PtySession& probe, std::string_view keys, const std::string& line) {
    probe.type(keys);
    if (probe.waitFor("[" + line + "]\r\n> ")) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "screen: " << probe.output();
}

class ConsoleTerminal : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(probe.waitFor("> ")); }

    PtySession probe{CONSOLE_PROBE, onTerminal("vt100")};
};

TEST_F(ConsoleTerminal, ALineIsReadOnEnter) {
    EXPECT_TRUE(reads(probe, "one two\r", "one two"));
    EXPECT_TRUE(reads(probe, "\r", ""));
}

TEST_F(ConsoleTerminal, TheTypedLineIsShownBehindThePromptOnce) {
    ASSERT_TRUE(reads(probe, "abc\r", "abc"));
    EXPECT_EQ(probe.output(), "> \r> abc\r\n[abc]\r\n> ");
}

TEST_F(ConsoleTerminal, ALineCanBeEdited) {
    EXPECT_TRUE(reads(probe, std::string("ac") + kLeft + "b\r", "abc"));
    EXPECT_TRUE(reads(probe,
                      "abx\x7f"
                      "c\r",
                      "abc"));
    EXPECT_TRUE(reads(probe,
                      "xyz\x15"
                      "abc\r",
                      "abc"));
    EXPECT_TRUE(reads(probe,
                      "bc\x01"
                      "a\r",
                      "abc"));
}

TEST_F(ConsoleTerminal, CursorUpBringsTheLastLineBack) {
    ASSERT_TRUE(reads(probe, "first\r", "first"));
    ASSERT_TRUE(reads(probe, "second\r", "second"));
    EXPECT_TRUE(reads(probe, std::string(kUp) + "\r", "second"));
    EXPECT_TRUE(reads(probe, std::string(kUp) + kUp + "\r", "first"));
}

TEST_F(ConsoleTerminal, ALineTwiceInARowIsOnceInTheHistory) {
    ASSERT_TRUE(reads(probe, "first\r", "first"));
    ASSERT_TRUE(reads(probe, "second\r", "second"));
    ASSERT_TRUE(reads(probe, "second\r", "second"));
    EXPECT_TRUE(reads(probe, std::string(kUp) + kUp + "\r", "first"));
}

TEST_F(ConsoleTerminal, ABlankLineIsNotInTheHistory) {
    ASSERT_TRUE(reads(probe, "first\r", "first"));
    ASSERT_TRUE(reads(probe, "  \r", "  "));
    EXPECT_TRUE(reads(probe, std::string(kUp) + "\r", "first"));
}

TEST_F(ConsoleTerminal, TabCompletesTheFirstWord) {
    EXPECT_TRUE(reads(probe, "wai\t50\r", "Wait 50"));
    EXPECT_TRUE(reads(probe, " tA\t5\r", " Tag 5"));
}

TEST_F(ConsoleTerminal, TabInsertsWhatTheCandidatesHaveInCommon) {
    EXPECT_TRUE(reads(probe, "capt\tx\r", "CAPture_x"));
}

TEST_F(ConsoleTerminal, TabWithoutProgressListsTheCandidates) {
    probe.type("cap\t");
    ASSERT_TRUE(probe.waitFor("CAPture_Finger  capf            CAPture_Slap    caps\r\n")) << probe.output();
    EXPECT_TRUE(reads(probe, "f\r", "capf"));
}

TEST_F(ConsoleTerminal, TabCompletesNoOtherWord) {
    EXPECT_TRUE(reads(probe, "x wai\t\r", "x wai"));
}

TEST_F(ConsoleTerminal, TabWithoutCandidateChangesNothing) {
    EXPECT_TRUE(reads(probe, "zz\t\r", "zz"));
}

TEST_F(ConsoleTerminal, CtrlDInAnEmptyLineIsAnEmptyLineAndMoreMayCome) {
    EXPECT_TRUE(reads(probe, "\x04", "empty"));
    EXPECT_TRUE(reads(probe, "next\r", "next"));
}

TEST_F(ConsoleTerminal, CtrlDInsideALineDeletes) {
    EXPECT_TRUE(reads(probe, std::string("abx") + kLeft + "\x04\r", "ab"));
}

TEST_F(ConsoleTerminal, ALineOfAnyLengthIsWhole) {
    EXPECT_TRUE(reads(probe, std::string(6000, 'a') + "b\r", "6001 bytes, last b"));
    EXPECT_TRUE(reads(probe, "next\r", "next"));
}

TEST_F(ConsoleTerminal, KeysAreReadWithoutEnter) {
    probe.type("keys 3\r");
    ASSERT_TRUE(probe.waitFor("keys?"));
    probe.type("a");
    EXPECT_TRUE(probe.waitFor("key 97\r\n"));
    probe.type("\x1b");
    EXPECT_TRUE(probe.waitFor("key 27\r\n"));
    probe.type("\r");
    EXPECT_TRUE(probe.waitFor("key 10\r\n> "));
    EXPECT_TRUE(reads(probe, "next\r", "next"));
}

TEST_F(ConsoleTerminal, KeysThatTerminalsUseThemselvesAreKeysToo) {
    probe.type("keys 3\r");
    ASSERT_TRUE(probe.waitFor("keys?"));
    probe.type("\x16\x04\x7f");
    EXPECT_TRUE(probe.waitFor("key 22\r\nkey 4\r\nkey 127\r\n")) << probe.output();
}

TEST_F(ConsoleTerminal, KeysAreNotEchoed) {
    probe.type("keys 2\r");
    ASSERT_TRUE(probe.waitFor("keys?\r\n"));
    const size_t before = probe.output().size();
    probe.type("xy");
    ASSERT_TRUE(probe.waitFor("> "));
    EXPECT_EQ(probe.output().substr(before), "key 120\r\nkey 121\r\n> ");
}

TEST_F(ConsoleTerminal, CursorAndFunctionKeysAreNotTheEscapeKey) {
    probe.type("hold 18\r");
    ASSERT_TRUE(probe.waitFor("holding"));
    probe.type("keys 4\r\x1b[A\x1b[15~\x1bOPq");
    EXPECT_TRUE(probe.waitFor("key 0\r\nkey 0\r\nkey 0\r\nkey 113\r\n")) << probe.output();
}

TEST_F(ConsoleTerminal, WhatFollowsTheEscapeKeyIsKept) {
    probe.type("hold 17\r");
    ASSERT_TRUE(probe.waitFor("holding"));
    probe.type("keys 2\r\x1b\x1bOther\rq\r");
    EXPECT_TRUE(probe.waitFor("key 27\r\nkey 27\r\n")) << probe.output();
    EXPECT_TRUE(probe.waitFor("[Other]\r\n")) << probe.output();
    EXPECT_TRUE(probe.waitFor("[q]\r\n")) << probe.output();
}

TEST_F(ConsoleTerminal, LinesTypedAheadAreAllRead) {
    probe.type("hold 18\r");
    ASSERT_TRUE(probe.waitFor("holding"));
    probe.type("one\rtwo\rthree\rrest");
    ASSERT_TRUE(probe.waitFor("held 18"));
    EXPECT_TRUE(probe.waitFor("[one]\r\n")) << probe.output();
    EXPECT_TRUE(probe.waitFor("[two]\r\n")) << probe.output();
    EXPECT_TRUE(probe.waitFor("[three]\r\n")) << probe.output();
    EXPECT_TRUE(reads(probe, " of it\r", "rest of it"));
}

TEST_F(ConsoleTerminal, KeysTypedAheadBehindALineAreKeys) {
    probe.type("hold 9\r");
    ASSERT_TRUE(probe.waitFor("holding"));
    probe.type("keys 2\rab");
    EXPECT_TRUE(probe.waitFor("key 97\r\nkey 98\r\n")) << probe.output();
}

TEST_F(ConsoleTerminal, ManyLinesWrittenAtOnceAreAllRead) {
    std::string lines;
    for (int i = 0; i < 200; ++i) {
        lines += "line " + std::to_string(i) + "\r";
    }
    probe.type(lines);
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(probe.waitFor("[line " + std::to_string(i) + "]\r\n")) << probe.output();
    }
}

TEST_F(ConsoleTerminal, ItCanBeClosedAndOpenedAgain) {
    ASSERT_TRUE(reads(probe, "reopen\r", "reopen"));
    EXPECT_TRUE(reads(probe, "ab\x7f\r", "a"));
}

TEST(ConsoleTerminalKinds, ADumbTerminalHasALineToo) {
    PtySession probe(CONSOLE_PROBE, onTerminal("dumb"));
    ASSERT_TRUE(probe.waitFor("> "));
    EXPECT_TRUE(reads(probe, "one\r", "one"));
    EXPECT_TRUE(reads(probe, "wai\t\r", "Wait "));
}

TEST(ConsoleTerminalKinds, AnUnknownTerminalHasALineToo) {
    PtySession probe(CONSOLE_PROBE, onTerminal("no-such-terminal"));
    ASSERT_TRUE(probe.waitFor("> "));
    EXPECT_TRUE(reads(probe, "one\r", "one"));
}

TEST(ConsoleTerminalKinds, CharactersOfTheOperatorsLocaleComeThrough) {
    PtySession probe(CONSOLE_PROBE, onTerminal("vt100", "C.UTF-8"));
    ASSERT_TRUE(probe.waitFor("> "));
    EXPECT_TRUE(reads(probe, "caf\xC3\xA9x\x7f\r", "caf\xC3\xA9"));
    EXPECT_TRUE(reads(probe,
                      "\xC3\xA9\x7f"
                      "e\r",
                      "e"));
}

TEST(ConsoleTerminalKinds, TypedBeforeTheProgramBeganIsRead) {
    RunOptions options = onTerminal("vt100");
    options.arguments = {"-c", "echo ready; while [ ! -e \"$1\" ]; do sleep 0.01; done; exec \"$0\"", CONSOLE_PROBE};
    const support::TemporaryFolder folder;
    options.arguments.push_back(folder.file("go"));
    PtySession probe("/bin/sh", options);
    ASSERT_TRUE(probe.waitFor("ready\r\n"));
    probe.type("early\rbird");
    ASSERT_TRUE(probe.waitFor("early\r\nbird"));  // the terminal's own echo: it has them
    ASSERT_TRUE(support::writeFile(folder.path() / "go", ""));
    EXPECT_TRUE(probe.waitFor("[early]\r\n")) << probe.output();
    EXPECT_TRUE(reads(probe, "s\r", "birds"));
}

TEST(ConsoleTerminalKinds, RedirectedOutputHoldsNothingOfTheEditing) {
    const support::TemporaryFolder folder;
    RunOptions options = onTerminal("vt100");
    options.arguments = {"-c", "exec \"$0\" >\"$1\"", CONSOLE_PROBE, folder.file("out")};
    PtySession probe("/bin/sh", options);
    probe.type(std::string("ac") + kLeft + "b\r");
    EXPECT_TRUE(probe.waitFor("\r\n"));
    probe.type("wai\t\r");
    EXPECT_TRUE(probe.waitFor("Wait "));
    probe.type("exit 3\r");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.exitCode(), 3);
    EXPECT_EQ(support::readFile(folder.path() / "out"), "> [abc]\n> [Wait ]\n> [exit 3]\n");
}

}  // namespace
