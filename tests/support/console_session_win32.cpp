#include "support/console_session.h"
#include "support/finder.h"
#include "support/spawn_win32.h"

namespace support {

namespace {

constexpr DWORD kPauseMs = 5;

HANDLE openConsole(const wchar_t* name) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                       OPEN_EXISTING, 0, nullptr);
}

DWORD controlKeys(int shiftState) {
    constexpr int kShift = 1;
    constexpr int kControl = 2;
    return ((shiftState & kShift) != 0 ? SHIFT_PRESSED : 0) | ((shiftState & kControl) != 0 ? LEFT_CTRL_PRESSED : 0);
}

void strikeKey(const Handle& input, wchar_t character, WORD virtualKey, DWORD control) {
    INPUT_RECORD record{};
    record.EventType = KEY_EVENT;
    KEY_EVENT_RECORD& key = record.Event.KeyEvent;
    key.wRepeatCount = 1;
    key.wVirtualKeyCode = virtualKey;
    key.wVirtualScanCode = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
    key.uChar.UnicodeChar = character;
    key.dwControlKeyState = control;
    for (const BOOL down : {TRUE, FALSE}) {
        key.bKeyDown = down;
        DWORD written = 0;
        WriteConsoleInputW(input.get(), &record, 1, &written);
    }
}

std::string rowText(const Handle& output, SHORT row, SHORT columns) {
    std::wstring text(static_cast<size_t>(columns), L' ');
    DWORD count = 0;
    ReadConsoleOutputCharacterW(output.get(), text.data(), static_cast<DWORD>(columns), {0, row}, &count);
    text.resize(text.find_last_not_of(L' ') + 1);
    return narrow(text) + "\n";
}

}  // namespace

struct ConsoleSession::Child {
    Handle input;
    Handle output;
    Finder finder;
    Process process;

    template <typename Condition>
    bool waitUntil(int timeoutMs, Condition condition) {
        const uint64_t deadline = steadyMs() + static_cast<uint64_t>(timeoutMs);
        for (;;) {
            const bool ended = process.ended();
            if (condition()) {
                return true;
            }
            if (ended || steadyMs() >= deadline) {
                return false;
            }
            Sleep(kPauseMs);
        }
    }
};

ConsoleSession::ConsoleSession(const std::string& program, const RunOptions& options)
    : child_(std::make_unique<Child>()) {
    FreeConsole();
    if (!AllocConsole()) {
        return;
    }
    child_->input.reset(openConsole(L"CONIN$"));
    child_->output.reset(openConsole(L"CONOUT$"));
    if (child_->input.open() && child_->output.open()) {
        child_->process.start(program, options, {child_->input.get(), child_->output.get(), child_->output.get()});
    }
}

ConsoleSession::~ConsoleSession() {
    child_.reset();
    FreeConsole();
}

bool ConsoleSession::started() const {
    return !child_->process.ended();
}

bool ConsoleSession::waitFor(std::string_view text, int timeoutMs) {
    return child_->waitUntil(timeoutMs, [&] { return child_->finder.find(screen(), text); });
}

void ConsoleSession::type(std::string_view text) {
    for (const wchar_t character : wide(text)) {
        const SHORT key = VkKeyScanW(character);
        const bool onKeyboard = key != -1;
        strikeKey(child_->input, character, onKeyboard ? LOBYTE(key) : 0, onKeyboard ? controlKeys(HIBYTE(key)) : 0);
    }
}

void ConsoleSession::strike(int virtualKey) {
    strikeKey(child_->input, L'\0', static_cast<WORD>(virtualKey), ENHANCED_KEY);
}

std::string ConsoleSession::screen() const {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    std::string text;
    if (GetConsoleScreenBufferInfo(child_->output.get(), &info)) {
        for (SHORT row = 0; row <= info.dwCursorPosition.Y; ++row) {
            text += rowText(child_->output, row, info.dwSize.X);
        }
    }
    return text;
}

unsigned ConsoleSession::outputCodePage() const {
    return GetConsoleOutputCP();
}

bool ConsoleSession::waitForExit(int timeoutMs) {
    return child_->waitUntil(timeoutMs, [&] { return child_->process.ended(); });
}

int ConsoleSession::exitCode() const {
    return child_->process.exitCode();
}

}  // namespace support
