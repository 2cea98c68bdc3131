#include "console/tester.h"

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::fakeHoxi;
using support::fakePlatform;

const char kFound[] = "TamTest: HoxiInitialize found 1 scanners\n";

class Tester : public support::TesterTest {
protected:
    // Runs the whole tester; what it returned is in exitCode.
    std::string run(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), "tamtest");
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        return printed([&] { exitCode = runTester(static_cast<int>(pointers.size()), pointers.data()); });
    }

    uint32_t exitCode = 0xFFFFFFFF;
    support::TemporaryFolder folder;
};

TEST_F(Tester, EmptySessionEndsWithTheResultOfTerminate) {
    fakePlatform().input = "Quit\nnop\n";
    fakeHoxi().results["Terminate"] = 77;
    EXPECT_EQ(run(), std::string(kFound) + "> ");
    EXPECT_EQ(exitCode, 77u);
    EXPECT_EQ(support::callNames(), (std::vector<std::string>{"Initialize", "GetBufSize", "Terminate"}));
}

TEST_F(Tester, EndOfInputFinishesAsByQuit) {
    fakePlatform().input = "tag\n";
    EXPECT_EQ(run(), std::string(kFound) + "> NEXT TAG: 1\n> ");
    EXPECT_EQ(exitCode, 0u);
    EXPECT_EQ(support::callNames().back(), "Terminate");
}

TEST_F(Tester, NoScannerEndsAtOnceWithZero) {
    fakeHoxi().scannerCount = 0;
    EXPECT_EQ(run(), "TamTest: HoxiInitialize found 0 scanners\n");
    EXPECT_EQ(exitCode, 0u);
    EXPECT_EQ(support::callNames(), std::vector<std::string>{"Initialize"});
}

TEST_F(Tester, FailedStartEndsAtOnceWithTheResult) {
    fakeHoxi().results["Initialize"] = 12;
    EXPECT_EQ(run(), "TamTest: Failed HoxiInitialize ()\n");
    EXPECT_EQ(exitCode, 12u);
}

TEST_F(Tester, FailedBufferSizeEndsAtOnceWithTheResult) {
    fakeHoxi().results["GetBufSize"] = 13;
    run();
    EXPECT_EQ(exitCode, 13u);
}

TEST_F(Tester, ArgumentsRunAScriptWithParameters) {
    support::writeFile(folder.file("a.scr"), "tag %1\ntag %2\n");
    EXPECT_EQ(run({folder.file("a.scr"), "10", "20"}), std::string(kFound) +
                                                           ">> tag %1\nNEXT TAG: 10\n"
                                                           ">> tag %2\nNEXT TAG: 20\n"
                                                           ">> \n> ");
}

TEST_F(Tester, ArgumentThatNamesNoFileIsToldAndThePromptFollows) {
    EXPECT_EQ(run({"none"}), std::string(kFound) + "TamTest: Failed to open script none\n> ");
}

TEST_F(Tester, LongArgumentsArriveWhole) {
    support::writeFile(folder.file("a.scr"), "%1 %2\n");
    const std::string longName(2000, 'n');
    EXPECT_EQ(run({folder.file("a.scr"), "s", longName}),
              std::string(kFound) + ">> %1 %2\nTamTest: Failed to open script " + longName + "\n>> \n> ");
}

TEST_F(Tester, ScriptThatCallsItselfStopsAtTheFourthLevelAndTheTesterExits) {
    const std::string name = folder.file("self.scr");
    support::writeFile(name, "s " + name + "\n");
    const std::string line = "s " + name + "\n";
    EXPECT_EQ(run({name}), kFound + (">> " + line) + (">>> " + line) + (">>>> " + line) + (">>>>> " + line) +
                               "TamTest: Exceeded maximum depth of nested scripts\n");
    EXPECT_EQ(support::callNames().back(), "Terminate");
}

TEST_F(Tester, FlaggedErrorLeavesAllScriptsAfterTheLineAndIsCleared) {
    support::writeFile(folder.file("a.scr"), "brst\ntag\n");
    support::writeFile(folder.file("b.scr"), "tag 5\ntag 6\n");
    fakeHoxi().results["BusReset"] = 5;
    fakePlatform().input = "s " + folder.file("b.scr") + "\n";
    EXPECT_EQ(run({folder.file("a.scr")}), std::string(kFound) +
                                               ">> brst\nTamTest: failure in HoxiBusReset\n"
                                               "> >> tag 5\nNEXT TAG: 5\n>> tag 6\nNEXT TAG: 6\n>> \n> ");
}

TEST_F(Tester, CommentBehindACommandDoesNotKeepItFromRunning) {
    fakePlatform().input = "nop ; comment\n";
    run();
    EXPECT_EQ(support::packetsPut(), (std::vector<std::vector<uint8_t>>{support::wordBytes({0, 1, 0})}));
}

TEST_F(Tester, ReferencesOfAScriptThatAreNoParametersAreIgnored) {
    support::writeFile(folder.file("a.scr"), "%3\n%0\n%11\n");
    EXPECT_EQ(run({folder.file("a.scr"), "x", "y"}), std::string(kFound) + ">> %3\n>> %0\n>> %11\n>> \n> ");
}

TEST_F(Tester, QuitEndsAfterTheCurrentLineEvenInAScript) {
    support::writeFile(folder.file("a.scr"), "quit\ntag\n");
    EXPECT_EQ(run({folder.file("a.scr")}), std::string(kFound) + ">> quit\n");
}

}  // namespace
}  // namespace console
