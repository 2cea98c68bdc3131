// Real keys at a pseudo-terminal.

#include <gtest/gtest.h>

#include "acceptance/tamtest.h"
#include "support/pty_session.h"

namespace acceptance {
namespace {

class Keys : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(session.waitFor("scanners\r\n> ")) << session.output(); }

    // A script in the session's folder.
    std::string script(const std::string& name, const std::string& content) {
        support::writeFile(folder.file(name), content);
        return folder.file(name);
    }

    // Types a line and sees that the tester has taken it: the next tag is what the line set.
    void expectPromptAnswers() {
        session.type("tag 4711\r");
        EXPECT_TRUE(session.waitFor("NEXT TAG: 4711\r\n")) << session.output();
    }

    support::TemporaryFolder folder;
    support::PtySession session{kTester, {.folder = folder.path().string()}};
};

TEST_F(Keys, LineIsEditedAndRun) {
    session.type("taX\x7Fg 55\r");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 55\r\n")) << session.output();
}

TEST_F(Keys, ReportsAppearAtTheWaitingPrompt) {
    session.type("nop\r");
    EXPECT_TRUE(session.waitFor("code: 1  state: 3  tag: 1  size: 0\r\n> ")) << session.output();
}

TEST_F(Keys, BlankEndsAWaitWithoutEnterAndOnlyTheWait) {
    script("a.scr", "w\ntag 66\n");
    session.type("s a\r");
    ASSERT_TRUE(session.waitFor("ESC to exit scripts\r\n")) << session.output();
    session.type(" ");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 66\r\n")) << session.output();
}

TEST_F(Keys, EscInAWaitLeavesAllScripts) {
    script("a.scr", "w\ntag 66\n");
    script("b.scr", "s a\ntag 77\n");
    session.type("s b\r");
    ASSERT_TRUE(session.waitFor("ESC to exit scripts\r\n")) << session.output();
    session.type("\x1B");
    ASSERT_TRUE(session.waitFor("\n> ") || session.waitFor("> ")) << session.output();
    expectPromptAnswers();
    EXPECT_EQ(session.output().find("NEXT TAG: 66"), std::string::npos);
    EXPECT_EQ(session.output().find("NEXT TAG: 77"), std::string::npos);
}

TEST_F(Keys, EscAbandonsAnEventWaitThatWouldNeverEnd) {
    session.type("ew 133 3\r");
    ASSERT_TRUE(session.waitFor("ESC to exit scripts\r\n")) << session.output();
    session.type("\x1B");
    expectPromptAnswers();
}

TEST_F(Keys, AnyKeyAbandonsACaptureWait) {
    session.type("cw 13\r");
    ASSERT_TRUE(session.waitFor("ESC to exit scripts\r\n")) << session.output();
    session.type("q");
    expectPromptAnswers();
}

TEST_F(Keys, KeyStopsTheNopLoop) {
    session.type("nopl\r");
    ASSERT_TRUE(session.waitFor("tag=3")) << session.output();
    session.type("x");
    expectPromptAnswers();
}

TEST_F(Keys, KeyAtTheEndOfALoopPassEndsThatScript) {
    script("a.scr", "tag 5\n");
    script("b.scr", "ls a\ntag 88\n");
    session.type("s b\r");
    ASSERT_TRUE(session.waitFor("NEXT TAG: 5\r\n")) << session.output();
    session.type("x");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 88\r\n")) << session.output();
}

TEST_F(Keys, EscAtTheEndOfALoopPassLeavesEveryScript) {
    script("a.scr", "tag 5\n");
    script("b.scr", "ls a\ntag 88\n");
    session.type("s b\r");
    ASSERT_TRUE(session.waitFor("NEXT TAG: 5\r\n")) << session.output();
    session.type("\x1B");
    expectPromptAnswers();
    EXPECT_EQ(session.output().find("NEXT TAG: 88"), std::string::npos);
}

TEST_F(Keys, TypedAheadLinesAreNotLost) {
    session.type("w 300\r");
    ASSERT_TRUE(session.waitFor("ESC to exit scripts\r\n")) << session.output();
    session.type(" tag 91\rtag 92\r");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 91\r\n")) << session.output();
    EXPECT_TRUE(session.waitFor("NEXT TAG: 92\r\n")) << session.output();
}

TEST_F(Keys, TabCompletesAnOperationsName) {
    session.type("FileV\t\r");
    EXPECT_TRUE(session.waitFor("TamTest version ")) << session.output();
}

TEST_F(Keys, CursorUpBringsTheLastLineBack) {
    session.type("tag 123\r");
    ASSERT_TRUE(session.waitFor("NEXT TAG: 123\r\n")) << session.output();
    session.type("tag 124\r");
    ASSERT_TRUE(session.waitFor("NEXT TAG: 124\r\n")) << session.output();
    session.type("\x10\x10\r");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 123\r\n")) << session.output();
}

TEST_F(Keys, AnswerToAQuestionIsNoLineToComeBackTo) {
    session.type("svp\r");
    ASSERT_TRUE(session.waitFor("storage?  ")) << session.output();
    session.type("no\r");
    ASSERT_TRUE(session.waitFor("...Canceled save parameters command.\r\n")) << session.output();
    session.type("\x10\r");
    EXPECT_TRUE(session.waitFor("storage?  ")) << session.output();
    session.type("no\r");
}

TEST_F(Keys, EscAtThePromptDoesNotTakeTheNextLetterWithIt) {
    session.type("\x1B");
    EXPECT_FALSE(session.waitFor("never", 100));
    expectPromptAnswers();
}

TEST_F(Keys, EscTypedAheadOfALineDoesNotTakeItsFirstLetterWithIt) {
    session.type("\x1Btag 31\r\x1B\x1Btag 32\r");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 31\r\n")) << session.output();
    EXPECT_TRUE(session.waitFor("NEXT TAG: 32\r\n")) << session.output();
}

TEST_F(Keys, ControlArrowMovesByAWord) {
    session.type("tag 12\x1B[1;5D9\r");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 912\r\n")) << session.output();
}

TEST_F(Keys, EndOfFileKeyRunsNothing) {
    session.type("\x04");
    expectPromptAnswers();
}

TEST_F(Keys, TerminalIsAsBeforeAfterQuit) {
    session.type("quit\r");
    ASSERT_TRUE(session.waitForExit()) << session.output();
    EXPECT_EQ(session.exitCode(), 0);
    EXPECT_TRUE(session.modesAsAtStart());
}

}  // namespace
}  // namespace acceptance
