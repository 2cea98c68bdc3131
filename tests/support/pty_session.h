// A program on a pseudo-terminal of 24 rows and 80 columns, run like a shell runs it: as the terminal's foreground
// job, so that the terminal's modes can still be looked at after the program's end. TERM is vt100 unless given.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "support/child_process.h"

namespace support {

class PtySession {
public:
    explicit PtySession(const std::string& program, const RunOptions& options = {});
    ~PtySession();
    PtySession(const PtySession&) = delete;
    PtySession& operator=(const PtySession&) = delete;

    // True when text is in the output behind the last text found. False after timeoutMs, or when the program has
    // ended without it. The terminal makes "\r\n" of every newline.
    bool waitFor(std::string_view text, int timeoutMs = 10000);
    void type(std::string_view keys);
    // All that has come to the screen so far, as it came.
    const std::string& output() const;

    bool waitForExit(int timeoutMs = 10000);
    // True when the program was stopped, as by SIGTSTP, since the last call that said so.
    bool waitForStop(int timeoutMs = 10000);
    int exitCode() const;  // -1: it did not exit by itself
    int signal() const;    // what ended it, 0: it exited
    void sendSignal(int number);

    // Hangs up: the terminal goes away, and the program is told by SIGHUP.
    void closeMaster();
    // True when the terminal's modes are those that the program found. Not after closeMaster.
    bool modesAsAtStart() const;

private:
    struct Child;
    std::unique_ptr<Child> child_;
};

}  // namespace support
