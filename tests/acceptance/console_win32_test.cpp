// Real keys at a real console.

#include <gtest/gtest.h>
#include <windows.h>

#include "acceptance/tamtest.h"
#include "support/console_session.h"

namespace acceptance {
namespace {

class Console : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(session.started()) << "there is no console, or the tester does not run in it";
        ASSERT_TRUE(session.waitFor("scanners\n>\n")) << session.screen();
    }

    // A script in the session's folder.
    void script(const std::string& name, const std::string& content) { support::writeFile(folder.file(name), content); }

    // Types a line and sees that the tester has taken it: the next tag is what the line set.
    void expectPromptAnswers() {
        session.type("tag 4711\r");
        EXPECT_TRUE(session.waitFor("NEXT TAG: 4711\n>\n")) << session.screen();
    }

    void startWait(const std::string& line) {
        session.type(line + "\r");
        ASSERT_TRUE(session.waitFor("ESC to exit scripts\n")) << session.screen();
    }

    support::TemporaryFolder folder;
    support::ConsoleSession session{kTester, {.folder = folder.path().string()}};
};

TEST_F(Console, LineIsEditedAndRun) {
    session.type("taX\bg 55\r");
    ASSERT_TRUE(session.waitFor("NEXT TAG: 55\n>\n")) << session.screen();
    EXPECT_EQ(session.screen(), std::string(kFound) + "> tag 55\nNEXT TAG: 55\n>\n");
}

TEST_F(Console, ReportsAppearAtTheWaitingPrompt) {
    session.type("nop\r");
    EXPECT_TRUE(session.waitFor("code: 1  state: 3  tag: 1  size: 0\n>\n")) << session.screen();
}

TEST_F(Console, BlankEndsAWaitWithoutEnterAndOnlyTheWait) {
    script("a.scr", "w\ntag 66\n");
    startWait("s a");
    session.type(" ");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 66\n")) << session.screen();
}

TEST_F(Console, EscInAWaitLeavesAllScripts) {
    script("a.scr", "w\ntag 66\n");
    script("b.scr", "s a\ntag 77\n");
    startWait("s b");
    session.type("\x1B");
    expectPromptAnswers();
    EXPECT_EQ(session.screen().find("NEXT TAG: 66"), std::string::npos);
    EXPECT_EQ(session.screen().find("NEXT TAG: 77"), std::string::npos);
}

TEST_F(Console, CursorKeyIsNoEscKey) {
    script("a.scr", "w\ntag 66\n");
    startWait("s a");
    session.strike(VK_UP);
    session.type(" ");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 66\n")) << session.screen();
}

TEST_F(Console, EscAbandonsAnEventWaitThatWouldNeverEnd) {
    startWait("ew 133 3");
    session.type("\x1B");
    expectPromptAnswers();
}

TEST_F(Console, KeyStopsTheNopLoop) {
    session.type("nopl\r");
    ASSERT_TRUE(session.waitFor("tag=3")) << session.screen();
    session.type("x");
    expectPromptAnswers();
}

TEST_F(Console, TypedAheadLinesAreNotLost) {
    startWait("w");
    session.type(" tag 91\rtag 92\r");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 91\n")) << session.screen();
    EXPECT_TRUE(session.waitFor("NEXT TAG: 92\n")) << session.screen();
}

TEST_F(Console, EndOfFileKeyRunsNothing) {
    session.type("\x1A\r");
    ASSERT_TRUE(session.waitFor("^Z\n>\n")) << session.screen();
    expectPromptAnswers();
}

TEST_F(Console, LettersBeyondAsciiComeThrough) {
    session.type("n\xC3\xB6p\r");
    EXPECT_TRUE(session.waitFor("Invalid command - n\xC3\xB6p\n")) << session.screen();
}

TEST_F(Console, LongLineIsRunInPieces) {
    session.type(std::string(251, 'x') + " tag 12\r");
    EXPECT_TRUE(session.waitFor("Invalid command - ")) << session.screen();
    expectPromptAnswers();
}

TEST_F(Console, CodePageIsAsBeforeAfterQuit) {
    EXPECT_EQ(session.outputCodePage(), CP_UTF8);
    session.type("quit\r");
    ASSERT_TRUE(session.waitForExit()) << session.screen();
    EXPECT_EQ(session.exitCode(), 0);
    EXPECT_NE(session.outputCodePage(), CP_UTF8);
}

}  // namespace
}  // namespace acceptance
