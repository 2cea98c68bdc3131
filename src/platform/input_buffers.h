// What has been read of standard input and not been asked for yet; the half of console_input that no system differs in.
// Main thread only.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/console_input.h"

namespace platform {

// Standard input as it stands: a pipe or a file.
struct StreamBuffer {
    std::array<unsigned char, 4096> bytes{};
    size_t next = 0;
    size_t count = 0;
    bool ended = false;

    bool hasMore() const { return next < count; }
    // The next byte, after fill() when there is none; kInputEnd when it has ended.
    template <typename Fill>
    int take(Fill fill) {
        if (!hasMore() && !ended) {
            fill();
        }
        return hasMore() ? bytes[next++] : kInputEnd;
    }
    // Notes that fill() has got so many bytes; none is the end.
    void filled(size_t byteCount) {
        next = 0;
        count = byteCount;
        ended = byteCount == 0;
    }
};

// How the reading of a line at a terminal or console ended.
enum class LineEnd {
    kComplete,
    kEmpty,  // the operator ended an empty line with the end-of-file key
    kGone,   // nothing can be read any more
};

// The line last edited at a terminal or console.
struct LineBuffer {
    std::string text;
    size_t next = 0;

    bool hasMore() const { return next < text.size(); }
    // The next byte, after edit(text) when there is none; kInputEmpty or kInputEnd when that gave none.
    template <typename Edit>
    int take(Edit edit) {
        if (!hasMore()) {
            *this = {};
            const LineEnd end = edit(text);
            if (end != LineEnd::kComplete) {
                return end == LineEnd::kEmpty ? kInputEmpty : kInputEnd;
            }
        }
        return static_cast<unsigned char>(text[next++]);
    }
};

}  // namespace platform
