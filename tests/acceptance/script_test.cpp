// Script files of every kind, through the built tester.

#include <gtest/gtest.h>

#include "acceptance/tamtest.h"

namespace acceptance {
namespace {

class ScriptFile : public ::testing::Test {
protected:
    // Runs a script of this content with arguments behind its name; the tester runs in the script's folder.
    support::RunResult run(const std::string& content, std::vector<std::string> arguments = {},
                           const std::string& input = "") {
        support::writeFile(folder.file("a.scr"), content);
        arguments.insert(arguments.begin(), "a.scr");
        return runTester(input, {.arguments = arguments, .folder = folder.path().string()});
    }

    support::TemporaryFolder folder;
};

TEST_F(ScriptFile, RunsWithItsParametersAndReturnsToTheConsole) {
    const support::RunResult result = run("tag %1\ntag %2\n", {"11", "22"}, "tag\n");
    EXPECT_EQ(result.out,
              std::string(kFound) + ">> tag %1\nNEXT TAG: 11\n>> tag %2\nNEXT TAG: 22\n>> \n> NEXT TAG: 22\n> ");
}

TEST_F(ScriptFile, CarriageReturnLineEndsRunTheSame) {
    const std::string plain = "tag 5\n; comment\n\ntag %1 ; x\nt\n";
    std::string carriage;
    for (const char byte : plain)
        carriage += byte == '\n' ? "\r\n" : std::string(1, byte);
    EXPECT_EQ(run(carriage, {"9"}).out, run(plain, {"9"}).out);
    EXPECT_NE(run(plain, {"9"}).out.find("NEXT TAG: 9\n"), std::string::npos);
}

TEST_F(ScriptFile, LastLineWithoutNewlineIsRun) {
    EXPECT_EQ(run("tag 5").out, std::string(kFound) + ">> tag 5NEXT TAG: 5\n>> \n> ");
}

TEST_F(ScriptFile, ZeroBytesAreNoEndOfLine) {
    EXPECT_EQ(run(std::string("tag\0"
                              "5\nx\0y\n",
                              10))
                  .out,
              std::string(kFound) + ">> tag 5\nNEXT TAG: 5\n>> x y\nTamTest: Invalid command - x\n>> \n> ");
}

TEST_F(ScriptFile, LongLineIsRunAsTwo) {
    const support::RunResult result = run(std::string(300, 'x') + "\n");
    EXPECT_NE(result.out.find("Invalid command - " + std::string(255, 'x') + "\n"), std::string::npos);
    EXPECT_NE(result.out.find("Invalid command - " + std::string(45, 'x') + "\n"), std::string::npos);
}

TEST_F(ScriptFile, FolderCannotBeOpened) {
    const support::RunResult result = runTester("s " + folder.path().string() + "\n");
    EXPECT_EQ(result.out, std::string(kFound) + "> TamTest: Failed to open script " + folder.path().string() + "\n> ");
}

TEST_F(ScriptFile, MissingFileIsToldAndThePromptFollows) {
    const support::RunResult result = runTester("", {.arguments = {"no-such-script"}});
    EXPECT_EQ(result.out, std::string(kFound) + "TamTest: Failed to open script no-such-script\n> ");
}

TEST_F(ScriptFile, ThatCallsItselfStopsAtTheFourthLevelAndExits) {
    const support::RunResult result = run("s a\n", {}, "tag\n");
    EXPECT_EQ(result.out, std::string(kFound) +
                              ">> s a\n>>> s a\n>>>> s a\n>>>>> s a\n"
                              "TamTest: Exceeded maximum depth of nested scripts\n");
    EXPECT_EQ(result.exitCode, 0);
}

TEST_F(ScriptFile, CountedLoopPrintsItsBanners) {
    support::writeFile(folder.file("b.scr"), "t\n");
    EXPECT_EQ(runTester("lsc 2 b\n", {.folder = folder.path().string()}).out,
              std::string(kFound) +
                  "> >> t\nNEXT TAG: 1\n>> \n:\n: COMPLETED LOOP 1 OF 2\n:\n\n"
                  ">> t\nNEXT TAG: 1\n>> \n:\n: COMPLETED LOOP 2 OF 2\n:\n\n> ");
}

TEST_F(ScriptFile, TypedAsACommandRunsToo) {
    support::writeFile(folder.file("NOPLx.scr"), "tag %1\n");
    EXPECT_EQ(runTester("NOPLx 4\n", {.folder = folder.path().string()}).out,
              std::string(kFound) + "> >> tag %1\nNEXT TAG: 4\n>> \n> ");
}

TEST_F(ScriptFile, LogHoldsScriptLinesAndMessagesButNeitherPromptsNorBanners) {
    support::writeFile(folder.file("b.scr"), "tag 7 ; seven\n");
    runTester("blog log.txt\nlsc 1 b\ntag 8\nhelp quit\n", {.folder = folder.path().string()});
    EXPECT_EQ(support::readText(folder.file("log.txt")),
              "tag 7 ; seven\nNEXT TAG: 7\n\nNEXT TAG: 8\nQuit\n        This operation exits the tester.\n");
}

}  // namespace
}  // namespace acceptance
