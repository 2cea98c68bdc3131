#include "console/keyboard_poll.h"

#include "console/console_state.h"
#include "console/scripts.h"

namespace console {

bool keyStruck() {
    return state.keyboardEnabled != 0 && platform::keyWaiting();
}

int readStruckKey() {
    return platform::readKey();
}

void takeWaitKey() {
    if (readStruckKey() == platform::kEscapeKey)
        leaveAllScripts();
}

}  // namespace console
