#include "console/line_reader.h"

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::fakePlatform;
using support::makeReport;

const char kReport[] = "Mon Nov 16 05:08:38 2026\n  scanner: 0  code: 133  state: 3  tag: 1  size: 0\n";

class LineReader : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
    }

    // Returns what was printed; the line read is in lastLine.
    std::string read() {
        return printed([this] {
            char line[kLineSize];
            readLine(line);
            lastLine = line;
        });
    }

    std::string lastLine;
};

TEST_F(LineReader, PromptsAndReadsALineWithoutItsNewline) {
    fakePlatform().input = "tag 5\nnop\n";
    EXPECT_EQ(read(), "> ");
    EXPECT_EQ(lastLine, "tag 5");
    read();
    EXPECT_EQ(lastLine, "nop");
}

TEST_F(LineReader, ConsoleLinesAreNotEchoed) {
    fakePlatform().input = "help\n";
    EXPECT_EQ(read(), "> ");
}

TEST_F(LineReader, LineEndsAtItsFirstSemicolon) {
    fakePlatform().input = "nop ; comment ; more\n";
    read();
    EXPECT_EQ(lastLine, "nop ");
}

TEST_F(LineReader, PendingReportsAreShownFirstAndThePromptComesAgain) {
    fakePlatform().input = "\n";
    deliver(makeReport(133, 3, 1));
    EXPECT_EQ(read(), std::string("> ") + kReport + "> ");
}

TEST_F(LineReader, TextMessageDoesNotMakeThePromptComeAgain) {
    fakePlatform().input = "\n";
    scannerlink::Report message = makeReport(200, 3, 1);
    support::setBytes(message, 20, "hello");
    deliver(message);
    EXPECT_EQ(read(), "> \n  hello\n  ");
}

TEST_F(LineReader, ReportsAreShownUntilTheOperatorBeginsToType) {
    fakePlatform().inputIsTerminal = true;
    deliverAt(50, makeReport(133, 3, 1));
    fakePlatform().at.emplace(80, [] { fakePlatform().input = "nop\n"; });
    EXPECT_EQ(read(), std::string("> ") + kReport + "> ");
    EXPECT_EQ(lastLine, "nop");
}

TEST_F(LineReader, EndlessReportsDoNotKeepTheLineFromBeingRead) {
    fakePlatform().input = "tag 5\n";
    scannerlink::state.quiet = 1;
    fakePlatform().onSleep = [] { deliver(makeReport(133, 3, 1)); };
    EXPECT_EQ(read().size(), 2u * 100u);
    EXPECT_EQ(lastLine, "tag 5");
}

TEST_F(LineReader, ReplyIsALineWithoutItsEnd) {
    fakePlatform().input = "YES \nnop\n";
    EXPECT_EQ(readReply("Sure? "), "YES ");
    EXPECT_EQ(fakePlatform().prompts, (std::vector<std::string>{"Sure? ", "> "}));
    EXPECT_EQ(fakePlatform().input, "nop\n");
}

TEST_F(LineReader, RestOfALongReplyIsGone) {
    fakePlatform().input = std::string(1000, 'y') + "\nnop\n";
    EXPECT_EQ(readReply("?"), std::string(255, 'y'));
    EXPECT_EQ(fakePlatform().input, "nop\n");
}

TEST_F(LineReader, ReplyAtTheEndOfTheInputIsEmpty) {
    EXPECT_EQ(readReply("?"), "");
}

TEST_F(LineReader, LineOf255CharactersIsWhole) {
    fakePlatform().input = std::string(254, 'x') + "\ny\n";
    read();
    EXPECT_EQ(lastLine, std::string(254, 'x'));
    read();
    EXPECT_EQ(lastLine, "y");
}

TEST_F(LineReader, LineOf300CharactersIsSplit) {
    fakePlatform().input = std::string(300, 'x') + "\ny\n";
    read();
    EXPECT_EQ(lastLine, std::string(255, 'x'));
    read();
    EXPECT_EQ(lastLine, std::string(45, 'x'));
    read();
    EXPECT_EQ(lastLine, "y");
}

TEST_F(LineReader, CarriageReturnBeforeTheNewlineDoesNotCount) {
    fakePlatform().input = "nop\r\na\rb\r\n";
    read();
    EXPECT_EQ(lastLine, "nop");
    read();
    EXPECT_EQ(lastLine, "a\rb");
}

TEST_F(LineReader, EndOfAPipeQuits) {
    read();
    EXPECT_EQ(lastLine, "");
    EXPECT_EQ(state.quit, 1);
}

TEST_F(LineReader, LastLineOfAPipeNeedsNoNewline) {
    fakePlatform().input = "nop";
    read();
    EXPECT_EQ(lastLine, "nop");
    EXPECT_EQ(state.quit, 0);
    read();
    EXPECT_EQ(state.quit, 1);
}

TEST_F(LineReader, EndOfALineAtTheTerminalRunsNothing) {
    fakePlatform().inputIsTerminal = true;
    fakePlatform().keys = "\x04";
    read();
    EXPECT_EQ(lastLine, "");
    EXPECT_EQ(state.quit, 0);
}

}  // namespace
}  // namespace console
