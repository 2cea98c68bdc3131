// The command log where the disk or the process fails.

#include <gtest/gtest.h>

#include <csignal>

#include "acceptance/tamtest.h"

namespace acceptance {
namespace {

TEST(CommandLog, OnAFullDiskLosesNothingOfTheConsole) {
    const support::RunResult result = runTester("blog /dev/full\ntag 5\nrlog\ntag 6\nelog\nquit\n");
    EXPECT_EQ(result.out, std::string(kFound) + "> > NEXT TAG: 5\n> > NEXT TAG: 6\n> > ");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(CommandLog, InAMissingFolderIsToldAndNothingIsLogged) {
    const support::RunResult result = runTester("blog /no/such/folder/log\ntag 5\nquit\n");
    EXPECT_EQ(result.out,
              std::string(kFound) + "> TamTest: Failed to open log file /no/such/folder/log\n> NEXT TAG: 5\n> ");
}

TEST(CommandLog, EndsWithTheLastMessageWhenTheProcessIsKilled) {
    const support::TemporaryFolder folder;
    support::PipeSession session(kTester, {.folder = folder.path().string()});
    session.type("blog log.txt\ntag 41\ntag 42\n");
    ASSERT_TRUE(session.waitFor("NEXT TAG: 42\n> ")) << session.output();
    session.sendSignal(SIGKILL);
    ASSERT_TRUE(session.waitForExit());
    EXPECT_EQ(support::readText(folder.file("log.txt")), "NEXT TAG: 41\nNEXT TAG: 42\n");
}

}  // namespace
}  // namespace acceptance
