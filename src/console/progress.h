// The progress of long work, as one line at the terminal: it appears after a second, is drawn again now and then, and
// is gone before anything else is printed. It reaches neither the log nor a pipe nor a file. Main thread only.
#pragma once

#include <cstdint>
#include <string>

namespace console {

class Progress {
public:
    // Work of this many bytes begins now.
    explicit Progress(uint64_t totalBytes);
    ~Progress();  // the line is gone
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // So many bytes are done by now.
    void update(uint64_t doneBytes);

private:
    uint64_t total_;
    uint64_t startMs_;
    uint64_t nextMs_;
    size_t drawn_ = 0;  // characters of the line at the terminal
};

// "52428800 of 104857600 bytes, 50 %, 25.0 MB/s, 2 s left". Pure.
std::string progressText(uint64_t doneBytes, uint64_t totalBytes, uint64_t elapsedMs);

}  // namespace console
