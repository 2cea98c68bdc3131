// The terminal is put back on every way out.
#include <gtest/gtest.h>

#include <csignal>

#include "support/pty_session.h"

namespace {

using support::PtySession;
using support::RunOptions;

constexpr int kExitAtEndOfInput = 7;

class TerminalRestored : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(probe.waitFor("> "));
        ASSERT_FALSE(probe.modesAsAtStart());
    }

    // What a sanitizer says of a fault that is meant goes to the terminal, not among the reports of what is wrong.
    PtySession probe{CONSOLE_PROBE, {.environment = {{"ASAN_OPTIONS", "log_path=stderr"}}}};
};

class TerminalRestoredAfterSignal : public TerminalRestored, public ::testing::WithParamInterface<int> {};

TEST_P(TerminalRestoredAfterSignal, BetweenLines) {
    probe.sendSignal(GetParam());
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.signal(), GetParam());
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST_P(TerminalRestoredAfterSignal, WhileALineIsEdited) {
    probe.type("ab");
    ASSERT_TRUE(probe.waitFor("ab"));
    probe.sendSignal(GetParam());
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.signal(), GetParam());
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST_P(TerminalRestoredAfterSignal, RaisedByTheProgram) {
    probe.type("raise " + std::to_string(GetParam()) + "\r");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.signal(), GetParam());
    EXPECT_TRUE(probe.modesAsAtStart());
}

INSTANTIATE_TEST_SUITE_P(Asked, TerminalRestoredAfterSignal,
                         ::testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGUSR1, SIGALRM),
                         [](const auto& signal) { return std::string(sigabbrev_np(signal.param)); });

// A sanitizer turns the program's own faults into an exit code.
class TerminalRestoredAfterFault : public TerminalRestored, public ::testing::WithParamInterface<const char*> {};

TEST_P(TerminalRestoredAfterFault, EndsUnsuccessfully) {
    probe.type(std::string(GetParam()) + "\r");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_TRUE(probe.signal() != 0 || probe.exitCode() != 0);
    EXPECT_TRUE(probe.modesAsAtStart());
}

INSTANTIATE_TEST_SUITE_P(Own, TerminalRestoredAfterFault,
                         ::testing::Values("abort", "raise 4", "raise 6", "raise 7", "raise 8", "raise 11"));

TEST_F(TerminalRestored, AtExit) {
    probe.type("exit 5\r");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.exitCode(), 5);
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST_F(TerminalRestored, WhenClosed) {
    probe.type("close\r");
    ASSERT_TRUE(probe.waitFor("closed\r\n"));
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST_F(TerminalRestored, ByTheInterruptKey) {
    probe.type("ab\x03");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.signal(), SIGINT);
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST_F(TerminalRestored, ByTheInterruptKeyWhileKeysAreRead) {
    probe.type("keys 1\r");
    ASSERT_TRUE(probe.waitFor("keys?"));
    probe.type("\x03");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.signal(), SIGINT);
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST_F(TerminalRestored, WhileStoppedAndTakenAgainWhenContinued) {
    probe.type("ab");
    ASSERT_TRUE(probe.waitFor("ab"));
    probe.type("\x1a");
    ASSERT_TRUE(probe.waitForStop());
    EXPECT_TRUE(probe.modesAsAtStart());
    probe.sendSignal(SIGCONT);
    ASSERT_TRUE(probe.waitFor("> ab")) << probe.output();  // the line is shown again
    EXPECT_FALSE(probe.modesAsAtStart());
    probe.type("c\r");
    EXPECT_TRUE(probe.waitFor("[abc]\r\n> ")) << probe.output();
}

TEST_F(TerminalRestored, AtEveryStop) {
    for (int round = 0; round < 3; ++round) {
        probe.type("\x1a");
        ASSERT_TRUE(probe.waitForStop());
        EXPECT_TRUE(probe.modesAsAtStart());
        probe.sendSignal(SIGCONT);
        probe.type("x\r");
        ASSERT_TRUE(probe.waitFor("[x]\r\n> ")) << probe.output();
        EXPECT_FALSE(probe.modesAsAtStart());
    }
}

TEST_F(TerminalRestored, TheEndOfTheTerminalEndsTheProgram) {
    probe.closeMaster();
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_TRUE(probe.signal() == SIGHUP || probe.exitCode() == kExitAtEndOfInput);  // whichever it meets first
}

TEST(TerminalSignals, AnIgnoredSignalStaysIgnored) {
    RunOptions options;
    options.arguments = {"-c", "trap '' INT HUP TSTP; exec \"$0\"", CONSOLE_PROBE};
    PtySession probe("/bin/sh", options);
    ASSERT_TRUE(probe.waitFor("> "));
    probe.type(
        "a\x03"
        "b\x1a"
        "c\r");
    EXPECT_TRUE(probe.waitFor("c]\r\n> ")) << probe.output();
    probe.sendSignal(SIGHUP);
    probe.type("edited");
    ASSERT_TRUE(probe.waitFor("edited")) << probe.output();
    EXPECT_FALSE(probe.modesAsAtStart());
    probe.type(
        "\x15"
        "exit 4\r");
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.exitCode(), 4);
    EXPECT_TRUE(probe.modesAsAtStart());
}

TEST(TerminalSignals, WithoutTheHangUpSignalTheInputEnds) {
    RunOptions options;
    options.arguments = {"-c", "trap '' HUP; \"$0\" 2>/dev/null; exit $?", CONSOLE_PROBE};
    PtySession probe("/bin/sh", options);
    ASSERT_TRUE(probe.waitFor("> "));
    probe.closeMaster();
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.exitCode(), kExitAtEndOfInput);
}

TEST(TerminalSignals, WithoutTheHangUpSignalAWaitForAKeyEnds) {
    RunOptions options;
    options.arguments = {"-c", "trap '' HUP; \"$0\" 2>/dev/null; exit $?", CONSOLE_PROBE};
    PtySession probe("/bin/sh", options);
    ASSERT_TRUE(probe.waitFor("> "));
    probe.type("keys 1\r");
    ASSERT_TRUE(probe.waitFor("keys?"));
    probe.closeMaster();
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.exitCode(), kExitAtEndOfInput);
}

TEST(TerminalBackground, TheProgramRunsOnAndTakesTheTerminalInTheForeground) {
    RunOptions options;
    options.arguments = {"-m", "-c",
                         "\"$0\" & until read -t 0; do sleep 0.01; done; sleep 0.05; read line; "
                         "echo \"shell: $line\"; jobs; fg; echo \"ended: $?\"",
                         CONSOLE_PROBE};
    PtySession shell("/bin/bash", options);
    ASSERT_TRUE(shell.waitFor("> "));
    EXPECT_TRUE(shell.modesAsAtStart());
    shell.type("mine\r");
    ASSERT_TRUE(shell.waitFor("shell: mine\r\n")) << shell.output();
    EXPECT_TRUE(shell.waitFor("Running")) << shell.output();
    shell.type("yo\x7furs\r");
    EXPECT_TRUE(shell.waitFor("[yurs]\r\n> ")) << shell.output();
    shell.type("exit 6\r");
    ASSERT_TRUE(shell.waitFor("ended: 6\r\n")) << shell.output();
    ASSERT_TRUE(shell.waitForExit());
    EXPECT_TRUE(shell.modesAsAtStart());
}

}  // namespace
