// A program in a real console of 80 columns, its own; keys are struck as the keyboard driver reports them, and what is
// on the screen is read back. A process has one console, so one session at a time. Windows only.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "support/child_process.h"

namespace support {

class ConsoleSession {
public:
    explicit ConsoleSession(const std::string& program, const RunOptions& options = {});
    ~ConsoleSession();
    ConsoleSession(const ConsoleSession&) = delete;
    ConsoleSession& operator=(const ConsoleSession&) = delete;

    // True when there is a console and the program runs in it.
    bool started() const;

    // True when text is on the screen behind the last text found. False after timeoutMs, or when the program has ended
    // without it.
    bool waitFor(std::string_view text, int timeoutMs = 10000);
    // Text is UTF-8; control characters are typed as a person does, "\r" by the enter key.
    void type(std::string_view text);
    // Keys without a character, by their virtual key code.
    void strike(int virtualKey);
    // The rows down to the cursor, without the blanks at their ends, each ended by a newline.
    std::string screen() const;

    // The code page in which the console reads what is printed.
    unsigned outputCodePage() const;

    bool waitForExit(int timeoutMs = 10000);
    int exitCode() const;  // -1: it did not exit by itself

private:
    struct Child;
    std::unique_ptr<Child> child_;
};

}  // namespace support
