#include "console/scripts.h"

#include "console/console_state.h"
#include "console/line_reader.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::fakePlatform;

class Scripts : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
        fakePlatform().inputIsTerminal = true;
    }
    ~Scripts() override { resetConsoleState(); }

    std::string write(const std::string& name, const std::string& text) {
        support::writeFile(folder.file(name), text);
        return folder.file(name);
    }

    // One round of the main loop.
    static std::string round() {
        return printed([] {
            char line[kLineSize];
            readLine(line);
            lastLine = line;
        });
    }

    static inline std::string lastLine;
    support::TemporaryFolder folder;
};

TEST_F(Scripts, FileIsPreferredToTheFileWithExtension) {
    write("test", "; plain\n");
    write("test.scr", "; extended\n");
    type("s " + folder.file("test"));
    EXPECT_EQ(round(), ">> ; plain\n");
}

TEST_F(Scripts, ExtensionIsTriedSecond) {
    write("test.scr", "; extended\n");
    EXPECT_EQ(type("s " + folder.file("test")), "");
    EXPECT_EQ(round(), ">> ; extended\n");
}

TEST_F(Scripts, UnopenableScriptIsNamedAsTyped) {
    const std::string name = folder.file("none");
    for (const char* operation : {"Script ", "Loop_Script ", "Loop_Script_Counted 2 "})
        EXPECT_EQ(type(operation + name), "TamTest: Failed to open script " + name + "\n");
    EXPECT_EQ(state.depth, 0);
}

TEST_F(Scripts, FolderIsNoScript) {
    const std::string name = folder.path().string();
    EXPECT_EQ(type("s " + name), "TamTest: Failed to open script " + name + "\n");
}

TEST_F(Scripts, DeviceWithoutEndIsNoScript) {
    EXPECT_EQ(type("s /dev/zero"), "TamTest: Failed to open script /dev/zero\n");
    EXPECT_EQ(type("/dev/zero"), "TamTest: Invalid command - /dev/zero\n");
}

TEST_F(Scripts, NamesAndCountsAreMandatory) {
    EXPECT_EQ(type("ls").substr(0, 68), "TamTest: Missing parameter - syntax for Loop_Script(ls) is:\nLoop_Scr");
    EXPECT_EQ(type("s").substr(0, 54), "TamTest: Missing parameter - syntax for Script(s) is:\n");
    EXPECT_EQ(type("lsc 3").substr(0, 69), "TamTest: Missing parameter - syntax for Loop_Script_Counted(lsc) is:\n");
    EXPECT_EQ(type("lsc").substr(0, 69), "TamTest: Missing parameter - syntax for Loop_Script_Counted(lsc) is:\n");
}

TEST_F(Scripts, TenParametersAreKeptAndTheEleventhIsIgnored) {
    const std::string name = write("a.scr", "");
    type("s " + name + " 1 2 3 4 5 6 7 8 9 10 11");
    EXPECT_EQ(state.levels[1].parameters[0], "1");
    EXPECT_EQ(state.levels[1].parameters[9], "10");
}

TEST_F(Scripts, ReferencesAmongTheParametersAreTheNewScriptsOwn) {
    const std::string name = write("a.scr", "");
    type("s " + name + " outer1 outer2");
    type("s " + name + " inner1 %1 %2 %5");
    const auto& parameters = state.levels[2].parameters;
    EXPECT_EQ(parameters[0], "inner1");
    EXPECT_EQ(parameters[1], "inner1");
    EXPECT_EQ(parameters[2], "inner1");
    EXPECT_EQ(parameters[3], std::nullopt);
}

TEST_F(Scripts, ScriptNameMayBeAParameterOfTheCallingScript) {
    const std::string name = write("a.scr", "");
    type("s " + name + " " + name);
    EXPECT_EQ(type("s %1"), "");
    EXPECT_EQ(state.depth, 2);
}

TEST_F(Scripts, LinesAreEchoedToConsoleAndLogAsTheyAre) {
    const std::string log = folder.file("log");
    const std::string name = write("a.scr", "  tag 5 ; comment\nnop\n");
    type("blog " + log);
    type("s " + name);
    EXPECT_EQ(round(), ">>   tag 5 ; comment\n");
    EXPECT_EQ(lastLine, "  tag 5 ");
    EXPECT_EQ(round(), ">> nop\n");
    EXPECT_EQ(support::readText(log), "  tag 5 ; comment\nnop\n");
}

TEST_F(Scripts, LastLineNeedsNoNewline) {
    type("s " + write("a.scr", "nop"));
    EXPECT_EQ(round(), ">> nop");
    EXPECT_EQ(lastLine, "nop");
    EXPECT_EQ(round(), ">> \n");
    EXPECT_EQ(state.depth, 0);
}

TEST_F(Scripts, CarriageReturnsBeforeLineEndsDoNotCount) {
    type("s " + write("a.scr", "nop\r\ntag\r\n"));
    EXPECT_EQ(round(), ">> nop\n");
    EXPECT_EQ(lastLine, "nop");
    EXPECT_EQ(round(), ">> tag\n");
    EXPECT_EQ(lastLine, "tag");
}

TEST_F(Scripts, CarriageReturnsElsewhereStay) {
    type("s " + write("a.scr", "a\rb\nc\r"));
    round();
    EXPECT_EQ(lastLine, "a\rb");
    round();
    EXPECT_EQ(lastLine, "c\r");
}

TEST_F(Scripts, MarkOfTheEncodingIsNoPartOfTheFirstLineOfAnyPass) {
    type("lsc 2 " + write("a", "\xEF\xBB\xBF; one\n"));
    EXPECT_EQ(round(), ">> ; one\n");
    round();
    EXPECT_EQ(round(), ">> ; one\n");
}

TEST_F(Scripts, OldMarkOfTheEndEndsTheScript) {
    type("s " + write("a", "; one\r\n\x1A; two\n; three\n"));
    EXPECT_EQ(round(), ">> ; one\n");
    EXPECT_EQ(round(), ">> \n");
    EXPECT_EQ(state.depth, 0);
}

TEST_F(Scripts, ZeroBytesReadAsBlanks) {
    type("s " + write("a.scr", std::string("t\0 5\0\nq\n", 8)));
    EXPECT_EQ(round(), ">> t  5 \n");
    EXPECT_EQ(lastLine, "t  5 ");
}

TEST_F(Scripts, LongLineIsRunAsTwo) {
    type("s " + write("a.scr", std::string(300, 'x') + "\nnop\n"));
    round();
    EXPECT_EQ(lastLine, std::string(255, 'x'));
    EXPECT_EQ(round(), ">> " + std::string(45, 'x') + "\n");
    round();
    EXPECT_EQ(lastLine, "nop");
}

TEST_F(Scripts, PromptGrowsWithTheDepth) {
    const std::string name = write("a.scr", "tag\n");
    type("s " + name);
    type("s " + name);
    type("s " + name);
    type("s " + name);
    EXPECT_EQ(round(), ">>>>> tag\n");
}

TEST_F(Scripts, EndOfFileReturnsToTheEnclosingLevel) {
    const std::string name = write("a.scr", "");
    type("lsc 7 " + name + " outer");
    type("s " + name + " inner");
    EXPECT_EQ(round(), ">>> \n");
    EXPECT_EQ(state.depth, 1);
    EXPECT_EQ(state.looping.count, 7u);
    EXPECT_EQ(state.levels[1].parameters[0], "outer");
    EXPECT_EQ(state.levels[2].parameters[0], std::nullopt);
}

TEST_F(Scripts, CountedLoopPrintsABannerForEveryPassAndEnds) {
    type("lsc 3 " + write("a.scr", "tag\n"));
    for (const char* pass : {"1", "2", "3"}) {
        EXPECT_EQ(round(), ">> tag\n");
        EXPECT_EQ(round(), ">> \n:\n: COMPLETED LOOP " + std::string(pass) + " OF 3\n:\n\n");
    }
    EXPECT_EQ(state.depth, 0);
}

TEST_F(Scripts, BannerHasAColonForEveryLevel) {
    const std::string name = write("a.scr", "");
    type("s " + name);
    type("lsc 2 " + name);
    EXPECT_EQ(round(), ">>> \n::\n:: COMPLETED LOOP 1 OF 2\n::\n\n");
}

TEST_F(Scripts, BannerStaysOutOfTheLogButTheEmptyLineDoesNot) {
    const std::string log = folder.file("log");
    type("blog " + log);
    type("lsc 2 " + write("a.scr", ""));
    round();
    EXPECT_EQ(support::readText(log), "\n");
}

TEST_F(Scripts, CountZeroLoopsWithoutLimitOrBanner) {
    type("lsc 0 " + write("a.scr", ""));
    for (int pass = 0; pass < 50; ++pass)
        EXPECT_EQ(round(), ">> \n");
    EXPECT_EQ(state.depth, 1);
}

TEST_F(Scripts, CountIsReadInBaseZero) {
    type("lsc 0x10 " + write("a.scr", ""));
    EXPECT_EQ(state.looping.count, 16u);
}

TEST_F(Scripts, LoopScriptRunsForEverWithoutBanner) {
    type("ls " + write("a.scr", "tag\n"));
    for (int pass = 0; pass < 50; ++pass) {
        EXPECT_EQ(round(), ">> tag\n");
        EXPECT_EQ(round(), ">> \n");
    }
    EXPECT_EQ(state.depth, 1);
}

TEST_F(Scripts, KeyAtTheEndOfAPassEndsThatScriptOnly) {
    const std::string name = write("a.scr", "");
    type("ls " + name);
    type("lsc 5 " + name);
    fakePlatform().keys = "xy";
    EXPECT_EQ(round(), ">>> \n");
    EXPECT_EQ(state.depth, 1);
    EXPECT_EQ(state.looping.loop, 1);
    EXPECT_EQ(fakePlatform().keys, "y");
}

TEST_F(Scripts, EscAtTheEndOfAPassLeavesEveryLevel) {
    const std::string name = write("a.scr", "");
    type("ls " + name);
    type("ls " + name);
    fakePlatform().keys = "\x1B";
    EXPECT_EQ(round(), ">>> \n");
    EXPECT_EQ(state.depth, 0);
    EXPECT_EQ(state.looping.loop, 0);
}

TEST_F(Scripts, KeyIsNotLookedAtWithPollingOff) {
    type("ls " + write("a.scr", ""));
    state.keyboardEnabled = 0;
    fakePlatform().keys = "\x1B";
    round();
    EXPECT_EQ(state.depth, 1);
    EXPECT_EQ(fakePlatform().keysRead, 0);
}

TEST_F(Scripts, PlainScriptLeavesKeysAlone) {
    type("s " + write("a.scr", ""));
    fakePlatform().keys = "\x1B";
    round();
    EXPECT_EQ(state.depth, 0);
    EXPECT_EQ(fakePlatform().keysRead, 0);
}

TEST_F(Scripts, FifthLevelIsRefusedAndQuits) {
    const std::string name = write("a.scr", "");
    for (int depth = 1; depth <= 4; ++depth)
        EXPECT_EQ(type("s " + name), "");
    EXPECT_EQ(state.quit, 0);
    EXPECT_EQ(type("s " + name), "TamTest: Exceeded maximum depth of nested scripts\n");
    EXPECT_EQ(state.quit, 1);
    EXPECT_EQ(state.depth, 4);
}

TEST_F(Scripts, MissingFileAtTheFourthLevelIsOnlyMissing) {
    const std::string name = write("a.scr", "");
    for (int depth = 1; depth <= 4; ++depth)
        type("s " + name);
    EXPECT_EQ(type("s " + name + "x"), "TamTest: Failed to open script " + name + "x\n");
    EXPECT_EQ(state.quit, 0);
}

TEST_F(Scripts, EscapeLeavesAllScriptsSilently) {
    const std::string name = write("a.scr", "");
    type("lsc 5 " + name);
    type("ls " + name);
    EXPECT_EQ(type("ESC"), "");
    EXPECT_EQ(state.depth, 0);
    EXPECT_EQ(state.script, nullptr);
    EXPECT_EQ(state.looping.loop, 0);
    EXPECT_EQ(state.looping.count, 0u);
}

TEST_F(Scripts, EscapeAtTheConsoleClearsTheLoopingState) {
    state.looping = {.loop = 1, .iteration = 2, .count = 3};
    EXPECT_EQ(type("esc"), "");
    EXPECT_EQ(state.looping.loop, 0);
    EXPECT_EQ(state.looping.iteration, 0u);
    EXPECT_EQ(state.looping.count, 0u);
}

}  // namespace
}  // namespace console
