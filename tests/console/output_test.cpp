#include "console/output.h"

#include "console/console_state.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::readText;

class Output : public support::TesterTest {
protected:
    ~Output() override { resetConsoleState(); }
    support::TemporaryFolder folder;
    std::string name = folder.file("log.txt");
};

TEST_F(Output, ReachesTheConsoleAndReturnsItsCount) {
    int count = 0;
    EXPECT_EQ(printed([&] { count = output("%d %s\n", 5, "x"); }), "5 x\n");
    EXPECT_EQ(count, 4);
}

TEST_F(Output, ReachesTheOpenLogAtOnce) {
    EXPECT_EQ(type("blog " + name), "");
    EXPECT_EQ(printed([] { output("first %d\n", 1); }), "first 1\n");
    EXPECT_EQ(readText(name), "first 1\n");
}

TEST_F(Output, ConsolePrintStaysOutOfTheLog) {
    type("blog " + name);
    EXPECT_EQ(printed([] { consolePrint("prompt %d", 1); }), "prompt 1");
    EXPECT_EQ(readText(name), "");
}

TEST_F(Output, BeginLogEmptiesTheFile) {
    support::writeFile(name, "old\n");
    type("Begin_LOG " + name);
    EXPECT_EQ(readText(name), "");
}

TEST_F(Output, BeginLogWithoutNameTellsTheSyntax) {
    EXPECT_EQ(type("blog"),
              "TamTest: Missing parameter - syntax for Begin_LOG(blog) is:\nBegin_LOG <log_file_name>\n"
              "For more information, enter \"? blog\"\n");
}

TEST_F(Output, LogInAMissingFolderFailsAndClosesTheOldOne) {
    type("blog " + name);
    const std::string bad = folder.file("none/log.txt");
    EXPECT_EQ(type("blog " + bad), "TamTest: Failed to open log file " + bad + "\n");
    printed([] { output("later\n"); });
    EXPECT_EQ(readText(name), "");
}

TEST_F(Output, LogThatIsAFolderFails) {
    EXPECT_EQ(type("blog " + folder.path().string()),
              "TamTest: Failed to open log file " + folder.path().string() + "\n");
}

TEST_F(Output, SecondLogClosesAndKeepsTheFirst) {
    const std::string second = folder.file("b.txt");
    type("blog " + name);
    printed([] { output("one\n"); });
    type("blog " + second);
    printed([] { output("two\n"); });
    EXPECT_EQ(readText(name), "one\n");
    EXPECT_EQ(readText(second), "two\n");
}

TEST_F(Output, EndLogStopsLogging) {
    type("blog " + name);
    EXPECT_EQ(type("elog"), "");
    printed([] { output("later\n"); });
    EXPECT_EQ(readText(name), "");
    EXPECT_EQ(type("End_LOG"), "");
}

TEST_F(Output, ResetLogDiscardsTheContentsAndGoesOn) {
    type("blog " + name);
    printed([] { output("one\n"); });
    EXPECT_EQ(type("rlog"), "");
    printed([] { output("two\n"); });
    EXPECT_EQ(readText(name), "two\n");
}

TEST_F(Output, ResetLogWithoutLogPrintsNothing) {
    EXPECT_EQ(type("rlog"), "");
    EXPECT_EQ(type("Reset_LOG"), "");
}

TEST_F(Output, ResetLogAfterEndLogLeavesTheFileAlone) {
    type("blog " + name);
    printed([] { output("one\n"); });
    type("elog");
    type("rlog");
    EXPECT_EQ(readText(name), "one\n");
}

// A path of exactly length characters that opens, through folders that lead nowhere.
std::string pathOfLength(const std::string& folder, size_t length) {
    std::string path = folder;
    while (path.size() + 4 < length)
        path += "/.";
    path += "/" + std::string(length - path.size() - 1, 'x');
    return path;
}

TEST_F(Output, NameOf255CharactersIsRemembered) {
    const std::string path = pathOfLength(folder.path().string(), 255);
    type("blog " + path);
    printed([] { output("one\n"); });
    EXPECT_EQ(type("rlog"), "");
    EXPECT_EQ(readText(path), "");
    EXPECT_NE(state.log, nullptr);
}

TEST_F(Output, NameOf256CharactersLogsButCannotBeReopened) {
    const std::string path = pathOfLength(folder.path().string(), 256);
    type("blog " + path);
    printed([] { output("one\n"); });
    EXPECT_EQ(type("rlog"), "TamTest: Cannot reopen log file\n");
    printed([] { output("two\n"); });
    EXPECT_EQ(readText(path), "one\n");
    EXPECT_EQ(type("rlog"), "");
}

TEST_F(Output, NameOf300CharactersLogsButCannotBeReopened) {
    const std::string path = pathOfLength(folder.path().string(), 300);
    EXPECT_EQ(type("blog " + path), "");
    printed([] { output("one\n"); });
    EXPECT_EQ(type("rlog"), "TamTest: Cannot reopen log file\n");
    EXPECT_EQ(readText(path), "one\n");
    EXPECT_EQ(state.log, nullptr);
}

TEST_F(Output, ReopenThatFailsIsSaidAndForgetsTheName) {
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::create_directory(folder.file("sub"));
    std::filesystem::current_path(folder.path());
    type("blog sub/log.txt");
    std::filesystem::current_path(here);
    EXPECT_EQ(type("rlog"), "TamTest: Failed to reopen log file sub/log.txt\n");
    EXPECT_EQ(type("rlog"), "");
    EXPECT_TRUE(state.logName.empty());
}

}  // namespace
}  // namespace console
