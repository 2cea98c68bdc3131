// Programs run by tests, through pipes: all at once, or step by step. A child inherits the environment but for
// HOXI_SCENARIO, which it has only when it is given. No child outlives its time-out or its session object.
// The line ends of the platform's text streams are read as newlines. Any one thread; one session per child.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace support {

struct RunOptions {
    std::vector<std::string> arguments = {};
    std::string input = {};                               // runProgram alone: all of standard input
    std::map<std::string, std::string> environment = {};  // set on top of what is inherited
    std::string folder = {};                              // where it runs; empty: where the test runs
    int timeoutMs = 20000;                                // runProgram alone
};

struct RunResult {
    int exitCode = -1;  // -1: it did not exit by itself
    int signal = 0;     // what ended it, 0: it exited
    std::string out;
    std::string err;
    bool timedOut = false;  // it was killed
};

// What is left of a result of 32 bits in the exit code of a process.
int exitCodeOf(int result);

// Runs program (a path) to its end. A program that cannot be started has exit code 127.
RunResult runProgram(const std::string& program, const RunOptions& options = {});

// A program whose standard input stays open, so that it can be fed in pieces.
class PipeSession {
public:
    explicit PipeSession(const std::string& program, const RunOptions& options = {});
    ~PipeSession();
    PipeSession(const PipeSession&) = delete;
    PipeSession& operator=(const PipeSession&) = delete;

    // True when text is in the output behind the last text found. False after timeoutMs, or when the program has
    // ended without it.
    bool waitFor(std::string_view text, int timeoutMs = 10000);
    void type(std::string_view bytes);
    // Standard input ends behind what has been typed.
    void closeInput();
    // All of standard output and standard error that has come so far.
    const std::string& output() const;
    const std::string& errorOutput() const;

    bool waitForExit(int timeoutMs = 10000);
    int exitCode() const;
    int signal() const;
    void sendSignal(int number);

private:
    struct Child;
    std::unique_ptr<Child> child_;
};

}  // namespace support
