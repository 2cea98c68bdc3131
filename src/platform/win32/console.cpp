#include "console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <cstdio>

namespace platform {

namespace {

constexpr DWORD kLineCharacters = 1024;
constexpr size_t kOutputBuffer = 65536;  // longer than any message
constexpr wchar_t kEndOfFileKey = 0x1A;

std::atomic<UINT> foundCodePage{0};
std::atomic<DWORD> foundOutputMode{0};  // 0: not changed
bool takenOnInput = false;
std::wstring leftOver;  // the first half of a character whose second half the buffer did not take

HANDLE input() {
    return GetStdHandle(STD_INPUT_HANDLE);
}

bool isConsole(HANDLE stream) {
    DWORD mode = 0;
    return GetConsoleMode(stream, &mode) != 0;
}

// Called by the system on a thread of its own; the event goes on to the next handler, which ends the process.
BOOL WINAPI putBackOnTheWayOut(DWORD) {
    putConsoleBack();
    return FALSE;
}

// A program before this one may have told the console not to.
void beginLinesAtNewlines() {
    constexpr DWORD kNoReturnAtNewline = 8;  // DISABLE_NEWLINE_AUTO_RETURN
    DWORD mode = 0;
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    if (GetConsoleMode(output, &mode) && (mode & kNoReturnAtNewline) != 0 &&
        SetConsoleMode(output, mode & ~kNoReturnAtNewline)) {
        foundOutputMode = mode;
    }
}

std::string utf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<size_t>(3) * text.size(), '\0');
    const int count = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                                          nullptr, nullptr);
    bytes.resize(static_cast<size_t>(count));
    return bytes;
}

std::wstring takeLeftOver() {
    std::wstring text;
    text.swap(leftOver);
    return text;
}

void keepHalfCharacter(std::wstring& text) {
    if (!text.empty() && IS_HIGH_SURROGATE(text.back())) {
        leftOver = text.back();
        text.pop_back();
    }
}

}  // namespace

bool consoleOnInput() {
    return isConsole(input());
}

bool consoleGone() {
    return takenOnInput && !consoleOnInput();
}

void takeConsole() {
    takenOnInput = consoleOnInput();
    UINT none = 0;
    const UINT found = GetConsoleOutputCP();
    if (found == 0 || !foundCodePage.compare_exchange_strong(none, found)) {
        return;
    }
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCtrlHandler(putBackOnTheWayOut, TRUE);
    if (isConsole(GetStdHandle(STD_OUTPUT_HANDLE))) {
        // A character's bytes must reach the console together, and as they are: in text mode the C library would take
        // each for a character of its own. The console itself begins a new line at every newline.
        std::setvbuf(stdout, nullptr, _IOFBF, kOutputBuffer);
        _setmode(_fileno(stdout), _O_BINARY);
        beginLinesAtNewlines();
    }
}

void putConsoleBack() {
    const UINT found = foundCodePage.exchange(0);
    if (found != 0) {
        SetConsoleOutputCP(found);
    }
    const DWORD mode = foundOutputMode.exchange(0);
    if (mode != 0) {
        SetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), mode);
    }
}

LineEnd readConsoleText(std::string& text) {
    std::array<wchar_t, kLineCharacters> buffer;
    DWORD count = 0;
    if (!ReadConsoleW(input(), buffer.data(), buffer.size(), &count, nullptr)) {
        return LineEnd::kGone;
    }
    if (count == 0 || buffer[0] == kEndOfFileKey) {
        return LineEnd::kEmpty;
    }
    std::wstring characters = takeLeftOver().append(buffer.data(), count);
    std::erase(characters, L'\r');
    keepHalfCharacter(characters);
    text = utf8(characters);
    return text.empty() ? LineEnd::kEmpty : LineEnd::kComplete;
}

}  // namespace platform
