#include "console/line_reader.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "console/console_state.h"
#include "console/output.h"
#include "console/scripts.h"
#include "link/status_check.h"
#include "platform/console_input.h"

namespace console {
namespace {

void printPrompt() {
    consolePrint("%s ", std::string(state.depth + 1, '>').c_str());
}

// Scanners that report faster than they can be shown must not keep the next line from being read for ever.
constexpr int kReportsBeforeInput = 100;

void promptAndShowReports() {
    int shown = 0;
    do
        printPrompt();
    while (scannerlink::checkStatus() != 0 && ++shown < kReportsBeforeInput);
}

void showReportsUntilTyping() {
    while (state.heldByte == -1 && !platform::inputReady())
        if (scannerlink::checkStatus() != 0)
            printPrompt();
}

int heldOrNextByte() {
    const int byte = state.heldByte != -1 ? state.heldByte : platform::readInputByte();
    state.heldByte = -1;
    return byte;
}

// Line ends of carriage return and line feed come through pipes; they read as a line feed, as in scripts.
int consoleByte() {
    const int byte = heldOrNextByte();
    if (byte != '\r')
        return byte;
    const int next = platform::readInputByte();
    if (next == '\n')
        return next;
    state.heldByte = next;
    return byte;
}

// Reads up to and with the newline, at most size - 1 characters, and a zero. A zero byte reads as a blank, so that
// what follows it is not lost. Returns the byte that ended the line: a newline, 0 for a full buffer, or what nextByte
// gives below 0.
int readText(char* line, size_t size, int (*nextByte)()) {
    size_t length = 0;
    int byte = 0;
    while (length < size - 1 && (byte = nextByte()) >= 0) {
        line[length++] = byte == '\0' ? ' ' : static_cast<char>(byte);
        if (byte == '\n')
            break;
        byte = 0;
    }
    line[length] = '\0';
    return byte;
}

void cutAtCommentOrNewline(char* line) {
    line[std::strcspn(line, ";")] = '\0';
    line[std::strcspn(line, "\n")] = '\0';
}

void readScriptLine(char* line) {
    readText(line, kLineSize, scriptByte);
    if (*line == '\0')
        endOfScript();
    else
        output("%s", line);
}

void readConsoleLine(char* line) {
    showReportsUntilTyping();
    const int end = readText(line, kLineSize, consoleByte);
    if (*line == '\0' && end == platform::kInputEnd)
        state.quit = 1;
}

}  // namespace

void readLine(char* line) {
    promptAndShowReports();
    if (state.depth > 0)
        readScriptLine(line);
    else
        readConsoleLine(line);
    cutAtCommentOrNewline(line);
}

std::string readReply(const char* question) {
    platform::setInputPrompt(question);
    char line[kLineSize];
    int byte = readText(line, kLineSize, consoleByte);
    while (byte >= 0 && byte != '\n')
        byte = consoleByte();
    platform::setInputPrompt(kConsolePrompt);
    line[std::strcspn(line, "\n")] = '\0';
    return line;
}

}  // namespace console
