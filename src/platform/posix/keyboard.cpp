#include "platform/keyboard.h"

#include <optional>
#include <string>
#include <string_view>

#include "terminal.h"

namespace platform {

namespace {

constexpr int kNoCharacter = 0;

std::optional<char> nextByteAtOnce() {
    if (!terminalByteWaiting()) {
        return std::nullopt;
    }
    const int byte = readTerminalByte();
    return byte < 0 ? std::nullopt : std::optional<char>(static_cast<char>(byte));
}

bool isCursorOrFunctionLetter(char byte) {
    return std::string_view("ABCDFHPQRS").find(byte) != std::string_view::npos;
}

// A terminal sends cursor and function keys as ESC and more bytes at once: "[", digits and a final letter or "~", or
// "O" and a letter. Taken for the ESC key, such a key would leave all scripts.
bool swallowRestOfSequence() {
    const std::optional<char> introducer = nextByteAtOnce();
    if (!introducer) {
        return false;
    }
    if (*introducer == '[') {
        std::optional<char> byte = nextByteAtOnce();
        while (byte && (*byte < '@' || *byte > '~')) {
            byte = nextByteAtOnce();
        }
        return true;
    }
    const std::optional<char> letter = *introducer == 'O' ? nextByteAtOnce() : std::nullopt;
    if (letter && isCursorOrFunctionLetter(*letter)) {
        return true;
    }
    returnTerminalBytes(letter ? std::string{*introducer, *letter} : std::string{*introducer});
    return false;
}

}  // namespace

bool keyWaiting() {
    return terminalOpen() && terminalByteWaiting();
}

int readKey() {
    if (!terminalOpen()) {
        return kEscapeKey;
    }
    int key = readTerminalByte();
    while (key == kTerminalInterrupted) {
        key = readTerminalByte();
    }
    if (key == kTerminalGone) {
        return kEscapeKey;
    }
    return key == kEscapeKey && swallowRestOfSequence() ? kNoCharacter : key;
}

}  // namespace platform
