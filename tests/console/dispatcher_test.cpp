#include "console/dispatcher.h"

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::fakeHoxi;
using support::packetsPut;

class Dispatcher : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
    }
};

TEST_F(Dispatcher, NamesAreFoundLongOrShortInAnyCase) {
    for (const char* line : {"nop", "NOP", "Nop"}) {
        fakeHoxi().calls.clear();
        type(line);
        EXPECT_EQ(packetsPut().size(), 1u) << line;
    }
    EXPECT_EQ(type("SCANNER"), "scanner index: 0\n");
    EXPECT_EQ(type("scnr"), "scanner index: 0\n");
}

TEST_F(Dispatcher, AbbreviationsNeverMatch) {
    EXPECT_EQ(type("NO"), "TamTest: Invalid command - NO\n");
    EXPECT_EQ(type("scanne"), "TamTest: Invalid command - scanne\n");
}

TEST_F(Dispatcher, NoplIsTheShortNameOfTheLoopButHelpKnowsNoLongNameNopl) {
    fakeHoxi().onPutCommand = [](uint32_t, const std::vector<uint8_t>&) { return 1u; };
    EXPECT_EQ(type("NOPL"), "TamTest: Failure in HoxiPutCommand - 1\n");
    EXPECT_EQ(type("NOPLx"), "TamTest: Invalid command - NOPLx\n");
}

TEST_F(Dispatcher, EmptyLinesBlanksAndCommentsRunNothing) {
    for (const char* line : {"", "   \t ", ";nop", "  ; nop", "\n"})
        EXPECT_EQ(type(line), "") << line;
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(Dispatcher, WordsBehindTheLastArgumentAreIgnored) {
    EXPECT_EQ(type("scnr 0 1 2"), "scanner index: 0\n");
}

TEST_F(Dispatcher, MissingParameterIsToldWithTheSyntax) {
    EXPECT_EQ(type("ew 133"),
              "TamTest: Missing parameter - syntax for Event_Wait(ew) is:\n"
              "Event_Wait <event_code> <state_code> [<tag_offset>]\n"
              "For more information, enter \"? ew\"\n");
    EXPECT_EQ(state.missingParameter, 0);
}

TEST_F(Dispatcher, UnknownWordIsInvalid) {
    EXPECT_EQ(type("StatusDelay 5"), "TamTest: Invalid command - StatusDelay\n");
}

TEST_F(Dispatcher, ReferenceAtTheConsoleIsAnOrdinaryWord) {
    EXPECT_EQ(type("%1"), "TamTest: Invalid command - %1\n");
}

TEST_F(Dispatcher, UnknownWordThatNamesAFileStartsItAsAScriptThatRunsOnce) {
    const support::TemporaryFolder folder;
    support::writeFile(folder.file("steps.scr"), "nop\n");
    state.looping = {.loop = 1, .iteration = 2, .count = 3};
    EXPECT_EQ(type(folder.file("steps") + " a b"), "");
    EXPECT_EQ(state.depth, 1);
    EXPECT_EQ(state.looping.loop, 0);
    EXPECT_EQ(state.levels[1].parameters[1], "b");
    EXPECT_EQ(state.levels[1].enclosingLooping.count, 3u);
}

TEST_F(Dispatcher, UnknownWordThatNamesAFolderIsInvalid) {
    const support::TemporaryFolder folder;
    EXPECT_EQ(type(folder.path().string()), "TamTest: Invalid command - " + folder.path().string() + "\n");
}

class DispatcherInScript : public Dispatcher {
protected:
    void SetUp() override {
        Dispatcher::SetUp();
        state.depth = 1;
        state.script = std::tmpfile();
        state.levels[1].parameters[0] = "tag";
        state.levels[1].parameters[1] = ";comment";
    }
};

TEST_F(DispatcherInScript, FirstWordMayBeAParameter) {
    EXPECT_EQ(type("%1 7"), "NEXT TAG: 7\n");
}

TEST_F(DispatcherInScript, LineWhoseParameterIsAbsentIsIgnored) {
    EXPECT_EQ(type("%3"), "");
    EXPECT_EQ(type("%3 nop"), "");
}

TEST_F(DispatcherInScript, LineWhoseReferenceIsNoParameterIsIgnored) {
    EXPECT_EQ(type("%0"), "");
    EXPECT_EQ(type("%11"), "");
    EXPECT_EQ(type("%% tag"), "");
}

TEST_F(DispatcherInScript, ParameterThatBeginsACommentIsIgnored) {
    EXPECT_EQ(type("%2"), "");
}

TEST_F(Dispatcher, OperationsThatAreStillToComeSaySo) {
    EXPECT_EQ(type("vstart 1 2"), "TamTest: this operation is not there yet\n");
}

}  // namespace
}  // namespace console
