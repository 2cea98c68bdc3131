#include "link/exercise.h"

#include "console/console_state.h"
#include "console/keyboard_poll.h"
#include "console/output.h"
#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/command_channel.h"
#include "link/link_state.h"
#include "link/scanner_link.h"
#include "link/waits.h"
#include "platform/clock.h"

namespace scannerlink {
namespace {

constexpr uint32_t kNopTimeoutMs = 10000;
constexpr uint32_t kPendingTimeoutMs = 100;
constexpr uint32_t kResetTimeoutMs = 11000;
constexpr uint32_t kRestartPauseMs = 30000;  // what a scanner takes to boot and to be found on the bus again

// Sends a command without payload under a new tag, which is left in tag.
int sendBare(uint32_t scanner, uint32_t code, uint32_t& tag) {
    const CommandHeader header = nextCommand(code);
    tag = header.tag;
    return sendCommandToScanner(scanner, &header, sizeof header);
}

int nopAnswered(uint32_t scanner, uint32_t tag) {
    return waitForStatusOf(scanner, hoxi::STA_NOP, hoxi::kComplete, tag, kNopTimeoutMs);
}

bool nopAllScanners() {
    for (uint32_t scanner = 0; scanner < state.scannerCount; ++scanner) {
        uint32_t tag = 0;
        if (!sendBare(scanner, hoxi::CMD_NOP, tag))
            return false;
        if (!nopAnswered(scanner, tag)) {
            console::output("TamTest: timed out waiting for nop status\n");
            return false;
        }
    }
    return true;
}

bool resetAllScanners() {
    for (uint32_t scanner = 0; scanner < state.scannerCount; ++scanner) {
        uint32_t tag = 0;
        const int sent = sendBare(scanner, hoxi::CMD_RESET, tag);
        if (!sent || console::errorFlagged())
            return false;
        if (!waitForStatusOf(scanner, hoxi::STA_COMMAND, hoxi::kPending, tag, kPendingTimeoutMs)) {
            console::output("TamTest: didn't get pending response to reset cmd\n");
            return false;
        }
    }
    return true;
}

uint32_t restartLibrary() {
    HoxiTerminate();
    platform::sleepMs(kRestartPauseMs);
    return initializeLink();
}

bool resetPass() {
    if (!nopAllScanners() || !resetAllScanners() || restartLibrary() != 0)
        return false;
    if (!waitForReset(kResetTimeoutMs)) {
        console::output("TamTest: one of the scanners didn't complete reset\n");
        return false;
    }
    if (console::errorFlagged()) {
        console::output("TamTest: HOXI error escaped attention of reset functions\n");
        return false;
    }
    return true;
}

}  // namespace

void nop() {
    uint32_t tag = 0;
    sendBare(state.currentScanner, hoxi::CMD_NOP, tag);
}

void nopLoop() {
    for (bool goOn = true; goOn;) {
        uint32_t tag = 0;
        if (!sendBare(state.currentScanner, hoxi::CMD_NOP, tag))
            return;
        const int answered = nopAnswered(state.currentScanner, tag);
        if (!answered)
            console::output("TamTest: nopl timed out waiting for status\n");
        goOn = answered && !console::errorFlagged();
        if (console::keyStruck()) {
            console::readStruckKey();
            return;
        }
    }
}

void reset() {
    resetAllScanners();
    restartLibrary();
}

void resetLoop() {
    for (bool goOn = true; goOn;) {
        goOn = resetPass();
        if (console::keyStruck()) {
            console::readStruckKey();
            console::output("TamTest: ending reset loop upon receipt of keystroke\n");
            return;
        }
    }
}

}  // namespace scannerlink
