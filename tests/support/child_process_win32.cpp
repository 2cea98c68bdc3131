#include <array>

#include "support/child_process.h"
#include "support/finder.h"
#include "support/spawn_win32.h"

namespace support {

namespace {

// More than any test types ahead of the child, so that writing never blocks.
constexpr DWORD kPipeBytes = 1 << 20;
constexpr DWORD kPauseMs = 2;

enum class ChildsEnd { kRead, kWrite };

// The child inherits its own end alone: of a pipe whose other end it held too it would never see the end.
bool makePipe(Handle& readEnd, Handle& writeEnd, ChildsEnd childsEnd) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    HANDLE ends[2] = {};
    if (!CreatePipe(&ends[0], &ends[1], &inheritable, kPipeBytes)) {
        return false;
    }
    readEnd.reset(ends[0]);
    writeEnd.reset(ends[1]);
    const Handle& ours = childsEnd == ChildsEnd::kRead ? writeEnd : readEnd;
    return SetHandleInformation(ours.get(), HANDLE_FLAG_INHERIT, 0) != 0;
}

void appendWithNewlines(std::string& text, std::string_view bytes) {
    for (const char byte : bytes) {
        if (byte == '\n' && !text.empty() && text.back() == '\r') {
            text.pop_back();
        }
        text += byte;
    }
}

void readAvailable(const Handle& pipe, std::string& text) {
    std::array<char, 4096> chunk{};
    DWORD count = 0;
    while (PeekNamedPipe(pipe.get(), nullptr, 0, nullptr, &count, nullptr) && count > 0 &&
           ReadFile(pipe.get(), chunk.data(), chunk.size(), &count, nullptr)) {
        appendWithNewlines(text, {chunk.data(), count});
    }
}

}  // namespace

struct PipeSession::Child {
    Handle input;
    Handle out;
    Handle err;
    std::string output;
    std::string errorOutput;
    Finder finder;
    Process process;

    void start(const std::string& program, const RunOptions& options);
    void pump();

    template <typename Condition>
    bool pumpUntil(int timeoutMs, Condition condition);
};

void PipeSession::Child::start(const std::string& program, const RunOptions& options) {
    Handle childInput;
    Handle childOut;
    Handle childErr;
    if (makePipe(childInput, input, ChildsEnd::kRead) && makePipe(out, childOut, ChildsEnd::kWrite) &&
        makePipe(err, childErr, ChildsEnd::kWrite)) {
        process.start(program, options, {childInput.get(), childOut.get(), childErr.get()});
    }
}

void PipeSession::Child::pump() {
    readAvailable(out, output);
    readAvailable(err, errorOutput);
}

// The end is looked at before the bytes are moved: after the child's end nothing of it is still to come.
template <typename Condition>
bool PipeSession::Child::pumpUntil(int timeoutMs, Condition condition) {
    const uint64_t deadline = steadyMs() + static_cast<uint64_t>(timeoutMs);
    for (;;) {
        const bool ended = process.ended();
        pump();
        if (condition()) {
            return true;
        }
        if (ended || steadyMs() >= deadline) {
            return false;
        }
        Sleep(kPauseMs);
    }
}

PipeSession::PipeSession(const std::string& program, const RunOptions& options) : child_(std::make_unique<Child>()) {
    child_->start(program, options);
}

PipeSession::~PipeSession() = default;

bool PipeSession::waitFor(std::string_view text, int timeoutMs) {
    return child_->pumpUntil(timeoutMs, [&] { return child_->finder.find(child_->output, text); });
}

void PipeSession::type(std::string_view bytes) {
    DWORD written = 0;
    if (!bytes.empty() && child_->input.open()) {
        WriteFile(child_->input.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }
}

void PipeSession::closeInput() {
    child_->input.close();
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
    return child_->pumpUntil(timeoutMs, [&] { return child_->process.ended(); });
}

int PipeSession::exitCode() const {
    return child_->process.exitCode();
}

int PipeSession::signal() const {
    return child_->process.signal();
}

void PipeSession::sendSignal(int number) {
    child_->process.kill(number);
}

int exitCodeOf(int result) {
    return result;
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
