#include "platform/keyboard.h"

#include <conio.h>

#include "console.h"

namespace platform {

namespace {

constexpr int kNoCharacter = 0;

// Cursor and function keys come as one of these and a second code, which is there at once.
bool introducesSecondCode(int code) {
    return code == 0 || code == 0xE0;
}

}  // namespace

bool keyWaiting() {
    return consoleGone() || (consoleOnInput() && _kbhit() != 0);
}

int readKey() {
    if (!consoleOnInput()) {
        return kEscapeKey;
    }
    const int key = _getch();
    if (key < 0) {
        return kEscapeKey;
    }
    if (introducesSecondCode(key) && _kbhit() != 0) {
        _getch();
        return kNoCharacter;
    }
    return key;
}

}  // namespace platform
