#include "terminal.h"

#include <poll.h>
#include <pthread.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <deque>

namespace platform {

namespace {

constexpr std::array kEndingSignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGILL,  SIGTRAP, SIGABRT,
                                       SIGBUS,  SIGFPE,  SIGUSR1, SIGSEGV, SIGUSR2, SIGPIPE,
                                       SIGALRM, SIGTERM, SIGXCPU, SIGXFSZ, SIGSYS,  SIGVTALRM};

// A pause for a key is no longer, since another thread may have taken the signal that continued the process.
constexpr int kLongestPauseMs = 100;

// What the signal handlers use is complete before the flag that guards it is set.
struct Terminal {
    termios found{};
    termios keys{};
    volatile std::sig_atomic_t open = 0;
    volatile std::sig_atomic_t foundKnown = 0;
    volatile std::sig_atomic_t continued = 0;
    bool handlersInstalled = false;
    bool gone = false;
    std::deque<char> returned;
};

Terminal terminal;
std::array<struct sigaction, NSIG> formerActions{};

// A terminal that is not the controlling one knows no background (tcgetpgrp fails).
bool inBackground() {
    const pid_t group = tcgetpgrp(STDIN_FILENO);
    return group != -1 && group != getpgrp();
}

termios keyModes(termios modes) {
    modes.c_iflag |= ICRNL;
    modes.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ECHONL | IEXTEN);
    modes.c_cc[VMIN] = 1;
    modes.c_cc[VTIME] = 0;
    return modes;
}

// These four are called from signal handlers too. In the background the modes are somebody else's: neither looked at
// nor touched. Modes are set at once rather than after pending output, which may be held up for ever; no typed byte
// is discarded either way.
void setModes(const termios& modes) {
    if (!inBackground()) {
        tcsetattr(STDIN_FILENO, TCSANOW, &modes);
    }
}

void noteFoundModes() {
    if (!terminal.foundKnown && !inBackground() && tcgetattr(STDIN_FILENO, &terminal.found) == 0) {
        terminal.keys = keyModes(terminal.found);
        terminal.foundKnown = 1;
    }
}

void takeModes() {
    noteFoundModes();
    if (terminal.foundKnown) {
        setModes(terminal.keys);
    }
}

void restoreModes() {
    if (terminal.foundKnown) {
        setModes(terminal.found);
        terminal.foundKnown = 0;
    }
}

// The signal is blocked until this returns; whoever had it before, as a rule the system, then gets it.
void onEndingSignal(int number) {
    const int formerError = errno;
    restoreModes();
    sigaction(number, &formerActions[static_cast<size_t>(number)], nullptr);
    raise(number);
    errno = formerError;
}

void onContinue(int) {
    const int formerError = errno;
    if (terminal.open) {
        takeModes();
        terminal.continued = 1;
    }
    errno = formerError;
}

// The real stop signal instead of SIGSTOP: without a shell to continue it the process must go on.
void onStop(int number) {
    const int formerError = errno;
    restoreModes();

    struct sigaction handler {};
    sigaction(number, &formerActions[static_cast<size_t>(number)], &handler);
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, number);
    raise(number);
    pthread_sigmask(SIG_UNBLOCK, &stop, nullptr);
    pthread_sigmask(SIG_BLOCK, &stop, nullptr);
    sigaction(number, &handler, nullptr);

    onContinue(SIGCONT);
    errno = formerError;
}

// A signal that whoever started us wants ignored stays ignored.
void install(int number, void (*handler)(int)) {
    struct sigaction& former = formerActions[static_cast<size_t>(number)];
    if (sigaction(number, nullptr, &former) != 0 ||
        ((former.sa_flags & SA_SIGINFO) == 0 && former.sa_handler == SIG_IGN)) {
        return;
    }
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigfillset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

void installHandlers() {
    if (terminal.handlersInstalled) {
        return;
    }
    for (const int number : kEndingSignals) {
        install(number, onEndingSignal);
    }
    install(SIGTSTP, onStop);
    install(SIGCONT, onContinue);
    std::atexit(closeTerminal);
    terminal.handlersInstalled = true;
}

}  // namespace

bool openTerminal() {
    if (!terminal.open && isatty(STDIN_FILENO) != 0) {
        installHandlers();
        noteFoundModes();
        terminal.open = 1;
    }
    return terminal.open != 0;
}

void closeTerminal() {
    terminal.open = 0;
    restoreModes();
}

bool terminalOpen() {
    return terminal.open != 0;
}

bool terminalInForeground() {
    return !inBackground();
}

bool terminalGone() {
    termios modes{};
    return terminal.gone || tcgetattr(STDIN_FILENO, &modes) != 0;
}

void takeKeyModes() {
    takeModes();
}

bool terminalByteWaiting() {
    if (terminal.gone || !terminal.returned.empty()) {
        return true;
    }
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, 0) > 0 && !inBackground();
}

int readTerminalByte() {
    if (!terminal.returned.empty()) {
        const auto byte = static_cast<unsigned char>(terminal.returned.front());
        terminal.returned.pop_front();
        return byte;
    }
    while (!terminal.gone) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (poll(&input, 1, kLongestPauseMs) < 0 && errno != EINTR) {
            terminal.gone = true;
        } else if (terminal.continued) {
            terminal.continued = 0;
            return kTerminalInterrupted;
        } else if (input.revents != 0) {
            unsigned char byte = 0;
            const ssize_t count = read(STDIN_FILENO, &byte, 1);
            if (count == 1) {
                return byte;
            }
            terminal.gone = count == 0 || (errno != EINTR && errno != EAGAIN);
        }
    }
    return kTerminalGone;
}

void returnTerminalBytes(std::string_view bytes) {
    terminal.returned.insert(terminal.returned.begin(), bytes.begin(), bytes.end());
}

}  // namespace platform
