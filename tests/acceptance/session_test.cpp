// Whole sessions through a pipe.

#include <gtest/gtest.h>

#include "acceptance/tamtest.h"

namespace acceptance {
namespace {

const char kWaiting[] = "TamTest: waiting - enter blank or CR to continue, ESC to exit scripts\n";
const char kNopReport[] = "<date>\n  scanner: 0  code: 1  state: 3  tag: 1  size: 0\n";

TEST(Session, EmptySessionEndsWithZero) {
    const support::RunResult result = runTester("Quit\n");
    EXPECT_EQ(result.out, std::string(kFound) + "> ");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
}

TEST(Session, EndOfInputFinishesAsByQuit) {
    const support::RunResult result = runTester("");
    EXPECT_EQ(result.out, std::string(kFound) + "> ");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Session, NopIsEchoedAndItsReportShownInTheWait) {
    const support::RunResult result = runTester("NOP\nWait 200\nQuit\n");
    EXPECT_EQ(result.exitCode, 0);
    const std::string text = withoutDates(result.out);
    const std::string start = std::string(kFound) + "> scanner 0 command: code=0, tag=1, size=0 - hoxirtn=0\n> ";
    EXPECT_EQ(text.substr(0, start.size()), start);
    EXPECT_NE(text.find(kNopReport), std::string::npos) << text;
    EXPECT_NE(text.find(kWaiting), std::string::npos) << text;
}

TEST(Session, WaitNeverEatsTheNextLineOfAPipe) {
    const support::RunResult result = runTester("Wait 50\nTag 5\nQuit\n");
    EXPECT_EQ(result.out, std::string(kFound) + "> " + kWaiting + "> NEXT TAG: 5\n> ");
}

TEST(Session, ReportsAppearWhileThePromptWaitsForAPipe) {
    support::PipeSession session(kTester);
    session.type("nop\n");
    EXPECT_TRUE(session.waitFor("code: 1  state: 3  tag: 1  size: 0\n> ")) << session.output();
    session.type("quit\n");
    EXPECT_TRUE(session.waitForExit());
    EXPECT_EQ(session.exitCode(), 0);
}

TEST(Session, VersionsOfTesterAndLibraryAreShown) {
    EXPECT_EQ(runTester("ver\n").out,
              std::string(kFound) + "> TamTest version " TAMTEST_VERSION "\nHOXI DLL version 1.0.0.0\n> ");
}

TEST(Session, LongLineIsRunAsTwo) {
    const std::string first = std::string(251, ' ') + "tag ";
    const support::RunResult result = runTester(first + "nop" + "\nquit\n");
    const std::string start = std::string(kFound) + "> NEXT TAG: 1\n> ";
    EXPECT_EQ(result.out.substr(0, start.size()), start) << result.out;
    EXPECT_NE(result.out.find("code=0, tag=1"), std::string::npos) << result.out;
}

TEST(Session, UnknownWordsAreNamed) {
    const support::RunResult result = runTester("NOPLx\n\xFF\xFE\nquit\n");
    EXPECT_EQ(result.out,
              std::string(kFound) + "> TamTest: Invalid command - NOPLx\n> TamTest: Invalid command - \xFF\xFE\n> ");
}

TEST(Session, MissingArgumentStillUsesUpNoMoreThanTheLine) {
    const support::RunResult result = runTester("ew\ntag\nquit\n");
    EXPECT_EQ(result.out, std::string(kFound) +
                              "> TamTest: Missing parameter - syntax for Event_Wait(ew) is:\n"
                              "Event_Wait <event_code> <state_code> [<tag_offset>]\n"
                              "For more information, enter \"? ew\"\n> NEXT TAG: 1\n> ");
}

TEST(Session, NoScannerEndsAtOnceWithZero) {
    const support::RunResult result =
        runTester("nop\n", {.environment = {{"HOXI_SCENARIO", scenario("no-scanner.toml")}}});
    EXPECT_EQ(result.out, "TamTest: HoxiInitialize found 0 scanners\n");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Session, BadScenarioIsToldAndEndsTheTester) {
    const support::TemporaryFolder folder;
    support::writeFile(folder.file("bad.toml"), "[library]\nnonsense = 1\n");
    const support::RunResult result = runTester("nop\n", {.environment = {{"HOXI_SCENARIO", folder.file("bad.toml")}}});
    EXPECT_EQ(result.out, "TamTest: Failed HoxiInitialize ()\n");
    EXPECT_NE(result.err.find("bad.toml:2: "), std::string::npos) << result.err;
    EXPECT_EQ(result.exitCode, support::exitCodeOf(9003));
}

TEST(Session, ManyScannersAreServedEight) {
    const support::RunResult result = runTester(
        "scnr 7\nscnr 8\nnop\nquit\n", {.environment = {{"HOXI_SCENARIO", scenario("too-many-scanners.toml")}}});
    EXPECT_NE(result.out.find("TamTest: only the first 8 scanners are used\n> scanner index: 7\n"
                              "> Invalid scanner index\nscanner index: 7\n"),
              std::string::npos)
        << result.out;
}

TEST(Session, RefusedCommandLeavesTheScript) {
    const support::TemporaryFolder folder;
    support::writeFile(folder.file("a.scr"), "nop\ntag\nnop\ntag\n");
    const support::RunResult result =
        runTester("", {.arguments = {folder.file("a.scr")},
                       .environment = {{"HOXI_SCENARIO", scenario("every-command-refused.toml")}}});
    EXPECT_NE(result.out.find("TamTest: Failure in HoxiPutCommand - "), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("NEXT TAG"), std::string::npos) << result.out;
}

TEST(Session, MalformedReportsAreShownWithinTheirFields) {
    support::PipeSession session(kTester, {.environment = {{"HOXI_SCENARIO", scenario("malformed-reports.toml")}}});
    session.type("w 1000\nquit\n");
    EXPECT_TRUE(session.waitForExit());
    EXPECT_EQ(session.exitCode(), 0) << session.output();
    EXPECT_EQ(session.signal(), 0);
    EXPECT_NE(session.output().find("    count: -1\n"), std::string::npos) << session.output();
    EXPECT_NE(session.output().find("    Image Processing Version:    " + std::string(168, 'D') + "\n"),
              std::string::npos)
        << session.output();
}

TEST(Session, UnpluggedScannerIsToldOnceAndTheTesterLivesOn) {
    support::PipeSession session(kTester,
                                 {.environment = {{"HOXI_SCENARIO", scenario("unplugged-after-commands.toml")}}});
    for (int i = 0; i < 12; ++i)
        session.type("nop\n");
    EXPECT_TRUE(session.waitFor("checkStatus found error 9101 for scanner 0\n")) << session.output();
    session.type("tag 5\nquit\n");
    EXPECT_TRUE(session.waitFor("NEXT TAG: 5\n")) << session.output();
    EXPECT_TRUE(session.waitForExit());
}

}  // namespace
}  // namespace acceptance
