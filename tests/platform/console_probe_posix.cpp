// A small program on the console input and the keyboard, for tests to look at from outside: it shows every line that
// it reads in brackets, and obeys a few of them.
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/clock.h"
#include "platform/console_input.h"
#include "platform/keyboard.h"

namespace {

constexpr const char* kPrompt = "> ";
constexpr const char* kWords[] = {"help", "CAPture_Finger", "capf", "CAPture_Slap", "caps", "Wait", "w", "Tag", "TAG"};
constexpr size_t kLongestShown = 60;
constexpr int kExitAtEnd = 7;

void say(const std::string& text) {
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

void showLine(const std::string& line) {
    if (line.size() > kLongestShown) {
        std::printf("[%zu bytes, last %c]\n", line.size(), line.back());
    } else {
        std::printf("[%s]\n", line.c_str());
    }
    std::fflush(stdout);
}

void showKeys(int count) {
    say("keys?");
    for (int i = 0; i < count; ++i) {
        while (!platform::keyWaiting()) {
            platform::sleepMs(1);
        }
        say("key " + std::to_string(platform::readKey()));
    }
}

// Does not look at the input until so many bytes are there.
void hold(int count) {
    say("holding");
    int waiting = 0;
    while (ioctl(STDIN_FILENO, FIONREAD, &waiting) == 0 && waiting < count) {
        platform::sleepMs(1);
    }
    say("held " + std::to_string(waiting));
}

void closeAndWait() {
    platform::closeConsoleInput();
    platform::closeConsoleInput();
    say("closed");
    for (;;) {
        pause();
    }
}

void obey(const std::string& line) {
    const auto number = [&line] { return std::atoi(line.c_str() + line.find(' ')); };
    if (line.starts_with("keys ")) {
        showKeys(number());
    } else if (line.starts_with("hold ")) {
        hold(number());
    } else if (line.starts_with("raise ")) {
        std::raise(number());
    } else if (line.starts_with("exit ")) {
        std::exit(number());
    } else if (line == "abort") {
        std::abort();
    } else if (line == "key waiting") {
        say(platform::keyWaiting() ? "yes" : "no");
    } else if (line == "close") {
        closeAndWait();
    } else if (line == "reopen") {
        platform::closeConsoleInput();
        platform::openConsoleInput(kPrompt, kWords);
    }
}

int readLine(std::string& line) {
    line.clear();
    while (!platform::inputReady()) {
        platform::sleepMs(1);
    }
    int byte = platform::readInputByte();
    while (byte >= 0 && byte != '\n') {
        line += static_cast<char>(byte);
        byte = platform::readInputByte();
    }
    return byte;
}

}  // namespace

int main() {
    platform::openConsoleInput(kPrompt, kWords);
    std::string line;
    for (;;) {
        std::printf("%s", kPrompt);
        std::fflush(stdout);
        const int end = readLine(line);
        if (end == platform::kInputEmpty) {
            say("[empty]");
            continue;
        }
        if (end == '\n' || !line.empty()) {
            showLine(line);
            obey(line);
        }
        if (end == platform::kInputEnd) {
            say(platform::readInputByte() == platform::kInputEnd ? "[end]" : "[no end]");
            return kExitAtEnd;
        }
    }
}
