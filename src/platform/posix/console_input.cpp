#include "platform/console_input.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "line_editor.h"
#include "platform/input_buffers.h"
#include "terminal.h"

namespace platform {

namespace {

StreamBuffer stream;
LineBuffer edited;

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
    stream.filled(count > 0 ? static_cast<size_t>(count) : 0);
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
        return edited.hasMore() || terminalByteWaiting();
    }
    return stream.hasMore() || stream.ended || waitForStream(0);
}

int readInputByte() {
    return terminalOpen() ? edited.take(editLine) : stream.take(fillStream);
}

void setInputPrompt(const char* prompt) {
    setLinePrompt(prompt);
}

}  // namespace platform
