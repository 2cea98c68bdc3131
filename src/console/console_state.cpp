#include "console/console_state.h"

#include "console/output.h"
#include "console/scripts.h"

namespace console {

ConsoleState state;

void resetConsoleState() {
    leaveAllScripts();
    endLog();
    state.quit = 0;
    state.missingParameter = 0;
    flagError(0);
    state.keyboardEnabled = 1;
    state.cursor = nullptr;
    state.heldByte = -1;
}

}  // namespace console
