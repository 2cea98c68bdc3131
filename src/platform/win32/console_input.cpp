#include "platform/console_input.h"

#include <conio.h>
#include <windows.h>

#include "console.h"
#include "platform/input_buffers.h"

namespace platform {

namespace {

StreamBuffer stream;
LineBuffer typed;

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
    stream.filled(read ? count : 0);
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
        return typed.hasMore() || _kbhit() != 0;
    }
    return stream.hasMore() || stream.ended || streamReady();
}

int readInputByte() {
    return consoleOnInput() ? typed.take(readConsoleText) : stream.take(fillStream);
}

// The console edits the line behind whatever stands there.
void setInputPrompt(const char*) {}

}  // namespace platform
