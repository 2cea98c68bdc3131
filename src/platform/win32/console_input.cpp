#include "platform/console_input.h"

#include <conio.h>
#include <windows.h>

#include <array>
#include <string>

#include "console.h"

namespace platform {

namespace {

// Standard input as it stands: a pipe or a file.
struct Stream {
    std::array<unsigned char, 4096> bytes{};
    size_t next = 0;
    size_t count = 0;
    bool ended = false;
};

// What was last read from the console, as far as it is not taken yet.
struct TypedText {
    std::string text;
    size_t next = 0;
};

Stream stream;
TypedText typed;

HANDLE input() {
    return GetStdHandle(STD_INPUT_HANDLE);
}

// Only a pipe can be silent. One that cannot be looked into has ended.
bool streamReady() {
    DWORD waiting = 0;
    return GetFileType(input()) != FILE_TYPE_PIPE || !PeekNamedPipe(input(), nullptr, 0, nullptr, &waiting, nullptr) ||
           waiting > 0;
}

void fillStream() {
    DWORD count = 0;
    const BOOL read = ReadFile(input(), stream.bytes.data(), stream.bytes.size(), &count, nullptr);
    stream.next = 0;
    stream.count = read ? count : 0;
    stream.ended = stream.count == 0;
}

int readStreamByte() {
    if (stream.next == stream.count && !stream.ended) {
        fillStream();
    }
    return stream.next < stream.count ? stream.bytes[stream.next++] : kInputEnd;
}

int readTypedByte() {
    if (typed.next == typed.text.size()) {
        typed = {};
        switch (readConsoleText(typed.text)) {
            case LineEnd::kComplete:
                break;
            case LineEnd::kEmpty:
                return kInputEmpty;
            case LineEnd::kGone:
                return kInputEnd;
        }
    }
    return static_cast<unsigned char>(typed.text[typed.next++]);
}

}  // namespace

// The console edits lines by itself, without knowing prompt or words.
void openConsoleInput(const char*, std::span<const char* const>) {
    takeConsole();
}

void closeConsoleInput() {
    putConsoleBack();
}

bool inputReady() {
    if (consoleOnInput()) {
        return typed.next < typed.text.size() || _kbhit() != 0;
    }
    return stream.next < stream.count || stream.ended || streamReady();
}

int readInputByte() {
    return consoleOnInput() ? readTypedByte() : readStreamByte();
}

// The console edits the line behind whatever stands there.
void setInputPrompt(const char*) {}

}  // namespace platform
