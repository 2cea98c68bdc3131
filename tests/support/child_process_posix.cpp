#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/child_process.h"
#include "support/spawn_posix.h"

namespace support {

struct PipeSession::Child {
    pid_t process = -1;
    Descriptor input;
    Descriptor out;
    Descriptor err;
    std::string pendingInput;
    std::string output;
    std::string errorOutput;
    Finder finder;
    bool inputEnds = false;
    bool ended = false;
    int exitCode = -1;
    int signal = 0;

    void start(const Command& command);
    void pump();
    void collect();
    void moveBytes();
    void killAll();

    template <typename Condition>
    bool pumpUntil(int timeoutMs, Condition condition);
};

// The child leads a session of its own: the tests' terminal is out of its reach, and one kill reaches all of it.
void PipeSession::Child::start(const Command& command) {
    Descriptor childInput;
    Descriptor childOut;
    Descriptor childErr;
    if (!makePipe(childInput, input) || !makePipe(out, childOut) || !makePipe(err, childErr)) {
        ended = true;
        return;
    }
    process = fork();
    if (process == 0) {
        setsid();
        dup2(childInput.number(), STDIN_FILENO);
        dup2(childOut.number(), STDOUT_FILENO);
        dup2(childErr.number(), STDERR_FILENO);
        command.execute();
    }
    ended = process < 0;
    makeNonBlocking(input);
    makeNonBlocking(out);
    makeNonBlocking(err);
}

void PipeSession::Child::moveBytes() {
    if (input.open() && !writeAvailable(input, pendingInput)) {
        pendingInput.clear();
        input.close();
    }
    if (inputEnds && pendingInput.empty()) {
        input.close();
    }
    if (out.open() && !readAvailable(out, output)) {
        out.close();
    }
    if (err.open() && !readAvailable(err, errorOutput)) {
        err.close();
    }
}

// Looked at before the bytes are moved: after the child's end nothing of it is still to come.
void PipeSession::Child::collect() {
    int status = 0;
    if (!ended && waitpid(process, &status, WNOHANG) == process) {
        ended = true;
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
}

void PipeSession::Child::pump() {
    collect();
    moveBytes();
}

template <typename Condition>
bool PipeSession::Child::pumpUntil(int timeoutMs, Condition condition) {
    const uint64_t deadline = steadyMs() + static_cast<uint64_t>(timeoutMs);
    for (;;) {
        pump();
        if (condition()) {
            return true;
        }
        if (ended || steadyMs() >= deadline) {
            return false;
        }
        waitForTraffic({out.number(), err.number()}, pendingInput.empty() ? -1 : input.number());
    }
}

void PipeSession::Child::killAll() {
    if (process <= 0) {
        return;
    }
    kill(-process, SIGKILL);
    if (!ended) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        ended = true;
        signal = SIGKILL;
    }
    moveBytes();
}

PipeSession::PipeSession(const std::string& program, const RunOptions& options) : child_(std::make_unique<Child>()) {
    const Command command(program, options);
    child_->start(command);
}

PipeSession::~PipeSession() {
    child_->killAll();
}

bool PipeSession::waitFor(std::string_view text, int timeoutMs) {
    return child_->pumpUntil(timeoutMs, [&] { return child_->finder.find(child_->output, text); });
}

void PipeSession::type(std::string_view bytes) {
    child_->pendingInput += bytes;
    child_->pump();
}

void PipeSession::closeInput() {
    child_->inputEnds = true;
    child_->pump();
}

const std::string& PipeSession::output() const {
    child_->pump();
    return child_->output;
}

const std::string& PipeSession::errorOutput() const {
    child_->pump();
    return child_->errorOutput;
}

bool PipeSession::waitForExit(int timeoutMs) {
    return child_->pumpUntil(timeoutMs, [&] { return child_->ended; });
}

int PipeSession::exitCode() const {
    return child_->exitCode;
}

int PipeSession::signal() const {
    return child_->signal;
}

void PipeSession::sendSignal(int number) {
    if (!child_->ended) {
        kill(child_->process, number);
    }
}

int exitCodeOf(int result) {
    return result & 0xFF;
}

RunResult runProgram(const std::string& program, const RunOptions& options) {
    PipeSession session(program, options);
    session.type(options.input);
    session.closeInput();
    RunResult result;
    result.timedOut = !session.waitForExit(options.timeoutMs);
    result.exitCode = session.exitCode();
    result.signal = session.signal();
    result.out = session.output();
    result.err = session.errorOutput();
    return result;
}

}  // namespace support
