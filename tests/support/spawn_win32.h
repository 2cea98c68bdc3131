// What the kinds of session need to start a child and to move bytes. Windows only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "support/child_process.h"

namespace support {

// An open handle; closed with the object.
class Handle {
public:
    explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
    ~Handle() { close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE get() const { return handle_; }
    bool open() const { return handle_ != nullptr; }
    void reset(HANDLE handle);
    void close() { reset(nullptr); }

private:
    HANDLE handle_;
};

struct StandardHandles {
    HANDLE input;
    HANDLE output;
    HANDLE error;
};

// A child; killed with the object.
class Process {
public:
    // The handles must be inheritable.
    void start(const std::string& program, const RunOptions& options, const StandardHandles& handles);
    ~Process();

    bool ended() const;
    void kill(int signal);
    int exitCode() const;  // -1: it did not exit by itself, 127: it could not be started
    int signal() const;

private:
    DWORD code() const;

    Handle process_;
};

std::wstring wide(std::string_view utf8);
std::string narrow(std::wstring_view text);

uint64_t steadyMs();

}  // namespace support
