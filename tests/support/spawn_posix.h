// What both kinds of session need to start a child and to move bytes. POSIX only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/child_process.h"
#include "support/finder.h"

namespace support {

// Everything a child needs, made before the fork, after which no memory may be taken.
class Command {
public:
    Command(const std::string& program, const RunOptions& options);
    // Becomes the program, with all signals as the system gives them. Called in the child; does not return.
    [[noreturn]] void execute() const;

private:
    std::string program_;
    std::string folder_;
    std::vector<std::string> words_;
    std::vector<std::string> settings_;
    std::vector<char*> argv_;
    std::vector<char*> envp_;
};

// In a child: dies with its parent, so that nothing is left behind when the tests are killed.
void dieWithParent();

// An open file descriptor; closed with the object.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    bool open() const { return number_ >= 0; }
    void reset(int number);
    void close() { reset(-1); }

private:
    int number_;
};

bool makePipe(Descriptor& readEnd, Descriptor& writeEnd);
void makeNonBlocking(const Descriptor& descriptor);

// Appends what is there to bytes. False at the end of the stream.
bool readAvailable(const Descriptor& descriptor, std::string& bytes);
// Takes from the front of bytes what could be written. False when nobody reads any more.
bool writeAvailable(const Descriptor& descriptor, std::string& bytes);

// Sleeps until one of the descriptors has something, at most a few milliseconds: a child's end makes no sound.
void waitForTraffic(std::vector<int> readable, int writable);

uint64_t steadyMs();

}  // namespace support
