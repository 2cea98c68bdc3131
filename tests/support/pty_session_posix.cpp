#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "support/pty_session.h"
#include "support/spawn_posix.h"

namespace support {

namespace {

// Written to the terminal behind all that the program wrote, so that nothing of it is missed.
constexpr std::string_view kLastBytes = "\x01 end of program \x01";

// What the session's leader tells the tests through a pipe.
struct Notice {
    enum Kind { kStarted, kStatus } kind;
    int value;
};

void tell(int pipe, Notice::Kind kind, int value) {
    const Notice notice{kind, value};
    [[maybe_unused]] const ssize_t written = write(pipe, &notice, sizeof notice);
}

[[noreturn]] void becomeProgram(const Command& command) {
    setpgid(0, 0);
    tcsetpgrp(STDIN_FILENO, getpid());
    command.execute();
}

// The leader of the terminal's session plays the shell: it starts the program as foreground job and stays when that
// has ended, since the end of a session's leader resets the terminal. It stays until it is killed.
[[noreturn]] void leadSession(const Command& command, const char* terminalName, int notices) {
    dieWithParent();
    for (const int number : {SIGHUP, SIGTTOU, SIGINT, SIGQUIT, SIGTSTP, SIGPIPE}) {
        signal(number, SIG_IGN);
    }
    setsid();
    const int terminal = open(terminalName, O_RDWR);
    ioctl(terminal, TIOCSCTTY, 0);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(terminal, standard);
    }
    close(terminal);

    const pid_t program = fork();
    if (program == 0) {
        becomeProgram(command);
    }
    setpgid(program, program);
    tell(notices, Notice::kStarted, program);
    int status = 0;
    while (waitpid(program, &status, WUNTRACED) == program) {
        if (!WIFSTOPPED(status)) {
            [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, kLastBytes.data(), kLastBytes.size());
        }
        tell(notices, Notice::kStatus, status);
    }
    for (;;) {
        pause();
    }
}

bool sameModes(const termios& left, const termios& right) {
    return left.c_iflag == right.c_iflag && left.c_oflag == right.c_oflag && left.c_cflag == right.c_cflag &&
           left.c_lflag == right.c_lflag && std::ranges::equal(left.c_cc, right.c_cc);
}

RunOptions withTerminalType(RunOptions options) {
    options.environment.insert({"TERM", "vt100"});
    return options;
}

}  // namespace

struct PtySession::Child {
    Descriptor master;
    Descriptor notices;
    termios modesAtStart{};
    pid_t leader = -1;
    pid_t program = -1;
    std::string pendingKeys;
    std::string noticeBytes;
    std::string output;
    Finder finder;
    bool statusKnown = false;
    bool allRead = false;
    int stops = 0;
    int exitCode = -1;
    int signal = 0;

    void start(const Command& command);
    bool openMaster();
    void pump();
    void readNotices();
    void take(const Notice& notice);
    void readScreen();
    bool ended() const { return statusKnown && allRead; }

    template <typename Condition>
    bool pumpUntil(int timeoutMs, Condition condition);
};

bool PtySession::Child::openMaster() {
    master.reset(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    const winsize size{24, 80, 0, 0};
    return master.open() && grantpt(master.number()) == 0 && unlockpt(master.number()) == 0 &&
           ioctl(master.number(), TIOCSWINSZ, &size) == 0 && tcgetattr(master.number(), &modesAtStart) == 0;
}

void PtySession::Child::start(const Command& command) {
    Descriptor leaderEnd;
    if (!openMaster() || !makePipe(notices, leaderEnd)) {
        statusKnown = allRead = true;
        return;
    }
    const std::string terminalName = ptsname(master.number());
    leader = fork();
    if (leader == 0) {
        master.close();
        leadSession(command, terminalName.c_str(), leaderEnd.number());
    }
    makeNonBlocking(master);
    makeNonBlocking(notices);
}

void PtySession::Child::take(const Notice& notice) {
    if (notice.kind == Notice::kStarted) {
        program = notice.value;
    } else if (WIFSTOPPED(notice.value)) {
        ++stops;
    } else {
        statusKnown = true;
        exitCode = WIFEXITED(notice.value) ? WEXITSTATUS(notice.value) : -1;
        signal = WIFSIGNALED(notice.value) ? WTERMSIG(notice.value) : 0;
    }
}

void PtySession::Child::readNotices() {
    if (notices.open() && !readAvailable(notices, noticeBytes)) {
        notices.close();
        statusKnown = true;
    }
    while (noticeBytes.size() >= sizeof(Notice)) {
        Notice notice{};
        std::memcpy(&notice, noticeBytes.data(), sizeof notice);
        noticeBytes.erase(0, sizeof notice);
        take(notice);
    }
}

void PtySession::Child::readScreen() {
    if (!master.open()) {
        allRead = true;
        return;
    }
    // Until the leader has opened the terminal there is nobody at its other end, which is no end of the stream.
    readAvailable(master, output);
    const size_t last = output.find(kLastBytes);
    if (last != std::string::npos) {
        output.resize(last);
        allRead = true;
    }
}

void PtySession::Child::pump() {
    readNotices();
    if (master.open() && program > 0) {
        writeAvailable(master, pendingKeys);
    }
    readScreen();
}

template <typename Condition>
bool PtySession::Child::pumpUntil(int timeoutMs, Condition condition) {
    const uint64_t deadline = steadyMs() + static_cast<uint64_t>(timeoutMs);
    for (;;) {
        pump();
        if (condition()) {
            return true;
        }
        if (ended() || steadyMs() >= deadline) {
            return false;
        }
        waitForTraffic({program > 0 ? master.number() : -1, notices.number()},
                       pendingKeys.empty() ? -1 : master.number());
    }
}

PtySession::PtySession(const std::string& program, const RunOptions& options) : child_(std::make_unique<Child>()) {
    const Command command(program, withTerminalType(options));
    child_->start(command);
    child_->pumpUntil(10000, [&] { return child_->program > 0; });
}

PtySession::~PtySession() {
    if (child_->program > 0) {
        kill(-child_->program, SIGKILL);
    }
    if (child_->leader > 0) {
        kill(child_->leader, SIGKILL);
        waitpid(child_->leader, nullptr, 0);
    }
}

bool PtySession::waitFor(std::string_view text, int timeoutMs) {
    return child_->pumpUntil(timeoutMs, [&] { return child_->finder.find(child_->output, text); });
}

void PtySession::type(std::string_view keys) {
    child_->pendingKeys += keys;
    child_->pump();
}

const std::string& PtySession::output() const {
    child_->pump();
    return child_->output;
}

bool PtySession::waitForExit(int timeoutMs) {
    return child_->pumpUntil(timeoutMs, [&] { return child_->ended(); });
}

bool PtySession::waitForStop(int timeoutMs) {
    if (!child_->pumpUntil(timeoutMs, [&] { return child_->stops > 0; })) {
        return false;
    }
    --child_->stops;
    return true;
}

int PtySession::exitCode() const {
    return child_->exitCode;
}

int PtySession::signal() const {
    return child_->signal;
}

void PtySession::sendSignal(int number) {
    if (child_->program > 0 && !child_->statusKnown) {
        kill(child_->program, number);
    }
}

// The system tells a hang-up to the session's leader alone; a shell passes it on to its jobs.
void PtySession::closeMaster() {
    child_->master.close();
    if (child_->program > 0 && !child_->statusKnown) {
        kill(-child_->program, SIGHUP);
    }
}

bool PtySession::modesAsAtStart() const {
    termios now{};
    return tcgetattr(child_->master.number(), &now) == 0 && sameModes(now, child_->modesAtStart);
}

}  // namespace support
