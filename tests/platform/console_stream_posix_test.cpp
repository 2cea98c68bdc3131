// Standard input is no terminal: a pipe, a file, a folder, or closed.
#include <gtest/gtest.h>

#include "platform/console_input.h"
#include "platform/keyboard.h"
#include "support/child_process.h"
#include "support/files.h"

namespace {

using support::PipeSession;
using support::RunOptions;
using support::runProgram;
using support::RunResult;

RunResult runProbe(const std::string& input) {
    RunOptions options;
    options.input = input;
    return runProgram(CONSOLE_PROBE, options);
}

RunResult runShell(const std::string& text, const std::string& argument) {
    RunOptions options;
    options.arguments = {"-c", text, CONSOLE_PROBE, argument};
    return runProgram("/bin/sh", options);
}

RunResult runProbeFrom(const std::string& path) {
    return runShell("exec \"$0\" <\"$1\"", path);
}

TEST(ConsoleStream, LinesOfAPipeAreReadAsTheyStand) {
    const RunResult result = runProbe("one\n\ntwo \t; x\n");
    EXPECT_EQ(result.out, "> [one]\n> []\n> [two \t; x]\n> [end]\n");
    EXPECT_EQ(result.exitCode, 7);
}

TEST(ConsoleStream, EveryByteComesThrough) {
    const RunResult result = runProbe(std::string("\x01\x7F\x80\xFF\0\r\x04z\n", 9));
    EXPECT_EQ(result.out, "> [\x01\x7F\x80\xFF]\n> [end]\n");  // shown as text, to its null byte
}

TEST(ConsoleStream, ALastLineWithoutNewlineIsRead) {
    EXPECT_EQ(runProbe("last").out, "> [last]\n[end]\n");
}

TEST(ConsoleStream, AnEmptyPipeHasEnded) {
    const RunResult result = runProbe("");
    EXPECT_EQ(result.out, "> [end]\n");
    EXPECT_EQ(result.exitCode, 7);
}

TEST(ConsoleStream, ALineLongerThanTheBufferIsWhole) {
    EXPECT_EQ(runProbe(std::string(10'000, 'a') + "b\nnext\n").out, "> [10001 bytes, last b]\n> [next]\n> [end]\n");
}

TEST(ConsoleStream, ThereIsNoKeyWhileThePipeHoldsBytes) {
    EXPECT_EQ(runProbe("key waiting\nnext\n").out, "> [key waiting]\nno\n> [next]\n> [end]\n");
}

TEST(ConsoleStream, ALineIsReadAsSoonAsItComes) {
    PipeSession probe(CONSOLE_PROBE);
    ASSERT_TRUE(probe.waitFor("> "));
    probe.type("fir");
    probe.type("st\n");
    ASSERT_TRUE(probe.waitFor("[first]\n> ")) << probe.output();
    probe.type("second\n");
    ASSERT_TRUE(probe.waitFor("[second]\n> ")) << probe.output();
    probe.closeInput();
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.output(), "> [first]\n> [second]\n> [end]\n");
}

TEST(ConsoleStream, AFileIsReadToItsEnd) {
    const support::TemporaryFolder folder;
    ASSERT_TRUE(support::writeFile(folder.path() / "lines", "one\ntwo\n"));
    const RunResult result = runProbeFrom(folder.file("lines"));
    EXPECT_EQ(result.out, "> [one]\n> [two]\n> [end]\n");
    EXPECT_EQ(result.exitCode, 7);
}

TEST(ConsoleStream, TheNullDeviceHasEnded) {
    EXPECT_EQ(runProbeFrom("/dev/null").out, "> [end]\n");
}

TEST(ConsoleStream, AFolderHasEnded) {
    EXPECT_EQ(runProbeFrom("/").out, "> [end]\n");
}

TEST(ConsoleStream, AClosedInputHasEnded) {
    EXPECT_EQ(runShell("exec \"$0\" <&-", "").out, "> [end]\n");
}

TEST(ConsoleStream, SignalsEndTheProcessAsEver) {
    PipeSession probe(CONSOLE_PROBE);
    ASSERT_TRUE(probe.waitFor("> "));
    probe.sendSignal(15);
    ASSERT_TRUE(probe.waitForExit());
    EXPECT_EQ(probe.signal(), 15);
}

TEST(Keyboard, WithoutATerminalReadsEscape) {
    EXPECT_FALSE(platform::keyWaiting());
    EXPECT_EQ(platform::readKey(), platform::kEscapeKey);
}

}  // namespace
