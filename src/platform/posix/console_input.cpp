#include "platform/console_input.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

#include "line_editor.h"
#include "terminal.h"

namespace platform {

namespace {

// Standard input as it stands: a pipe or a file.
struct Stream {
    std::array<unsigned char, 4096> bytes{};
    size_t next = 0;
    size_t count = 0;
    bool ended = false;
};

// The line last edited at the terminal, as far as it is not read yet.
struct EditedLine {
    std::string text;
    size_t next = 0;
};

Stream stream;
EditedLine edited;

bool waitForStream(int timeoutMs) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, timeoutMs) > 0;
}

void fillStream() {
    ssize_t count = -1;
    do {
        count = read(STDIN_FILENO, stream.bytes.data(), stream.bytes.size());
        if (count < 0 && errno == EAGAIN) {
            waitForStream(-1);
        }
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    stream.next = 0;
    stream.count = count > 0 ? static_cast<size_t>(count) : 0;
    stream.ended = count <= 0;
}

int readStreamByte() {
    if (stream.next == stream.count && !stream.ended) {
        fillStream();
    }
    return stream.next < stream.count ? stream.bytes[stream.next++] : kInputEnd;
}

int readEditedByte() {
    if (edited.next == edited.text.size()) {
        edited = {};
        switch (editLine(edited.text)) {
            case LineEnd::kComplete:
                break;
            case LineEnd::kEmpty:
                return kInputEmpty;
            case LineEnd::kGone:
                return kInputEnd;
        }
    }
    return static_cast<unsigned char>(edited.text[edited.next++]);
}

}  // namespace

// The editor, when it is made, sets modes of its own: after those to be put back are noted, before ours are set.
void openConsoleInput(const char* prompt, std::span<const char* const> words) {
    if (!openTerminal()) {
        return;
    }
    if (prepareLineEditor(prompt, words)) {
        takeKeyModes();
    } else {
        closeTerminal();
    }
}

void closeConsoleInput() {
    closeTerminal();
}

bool inputReady() {
    if (terminalOpen()) {
        return edited.next < edited.text.size() || terminalByteWaiting();
    }
    return stream.next < stream.count || stream.ended || waitForStream(0);
}

int readInputByte() {
    return terminalOpen() ? readEditedByte() : readStreamByte();
}

void setInputPrompt(const char* prompt) {
    setLinePrompt(prompt);
}

}  // namespace platform
