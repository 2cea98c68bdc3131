#include "support/spawn_posix.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>

extern char** environ;

namespace support {

namespace {

constexpr int kNotStarted = 127;
constexpr int kLongestPauseMs = 5;

std::map<std::string, std::string> childEnvironment(const RunOptions& options) {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text(*entry);
        const size_t equals = text.find('=');
        if (equals != std::string_view::npos) {
            variables[std::string(text.substr(0, equals))] = text.substr(equals + 1);
        }
    }
    variables.erase("HOXI_SCENARIO");
    for (const auto& [name, value] : options.environment) {
        variables[name] = value;
    }
    return variables;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

}  // namespace

Command::Command(const std::string& program, const RunOptions& options)
    : program_(std::filesystem::absolute(program).string()), folder_(options.folder) {
    // A child that has ended or closed its input is a result, not the end of the tests.
    std::signal(SIGPIPE, SIG_IGN);
    words_.push_back(program_);
    words_.insert(words_.end(), options.arguments.begin(), options.arguments.end());
    for (const auto& [name, value] : childEnvironment(options)) {
        settings_.push_back(name + "=" + value);
    }
    argv_ = pointers(words_);
    envp_ = pointers(settings_);
}

void dieWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

void Command::execute() const {
    dieWithParent();
    for (int number = 1; number < NSIG; ++number) {
        std::signal(number, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (folder_.empty() || chdir(folder_.c_str()) == 0) {
        execve(program_.c_str(), argv_.data(), envp_.data());
    }
    _exit(kNotStarted);
}

void Descriptor::reset(int number) {
    if (number_ >= 0) {
        ::close(number_);
    }
    number_ = number;
}

bool makePipe(Descriptor& readEnd, Descriptor& writeEnd) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return false;
    }
    readEnd.reset(ends[0]);
    writeEnd.reset(ends[1]);
    return true;
}

void makeNonBlocking(const Descriptor& descriptor) {
    fcntl(descriptor.number(), F_SETFL, fcntl(descriptor.number(), F_GETFL) | O_NONBLOCK);
}

bool readAvailable(const Descriptor& descriptor, std::string& bytes) {
    std::array<char, 4096> chunk{};
    for (;;) {
        const ssize_t count = read(descriptor.number(), chunk.data(), chunk.size());
        if (count > 0) {
            bytes.append(chunk.data(), static_cast<size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return count < 0 && errno == EAGAIN;
        }
    }
}

bool writeAvailable(const Descriptor& descriptor, std::string& bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor.number(), bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.erase(0, static_cast<size_t>(count));
        } else if (errno != EINTR) {
            return errno == EAGAIN;
        }
    }
    return true;
}

void waitForTraffic(std::vector<int> readable, int writable) {
    std::vector<pollfd> entries;
    for (const int number : readable) {
        entries.push_back({number, POLLIN, 0});
    }
    entries.push_back({writable, POLLOUT, 0});
    poll(entries.data(), entries.size(), kLongestPauseMs);
}

uint64_t steadyMs() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

}  // namespace support
