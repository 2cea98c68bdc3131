#include "console/settings.h"

#include <cinttypes>
#include <cstdio>

#include "console/console_state.h"
#include "console/keyboard_poll.h"
#include "console/output.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi.h"
#include "link/link_state.h"
#include "link/report.h"
#include "link/status_check.h"
#include "link/waits.h"
#include "platform/program_version.h"

namespace console {
namespace {

constexpr uint32_t kEventPollMs = 100;
constexpr size_t kVersionSize = 20;
constexpr size_t kLeastVersionSize = 19;

// The tag of the most recent command, less the optional tag offset.
uint32_t wantedTag() {
    const char* offset = nextArgument(kOptional);
    return scannerlink::state.nextTag - 1 - (offset != nullptr ? toUnsigned(offset) : 0);
}

// Runs the wait in short spells until it succeeds or a key is struck.
template <typename Wait>
void repeatUntilKey(Wait waitOnce) {
    while (!keyStruck())
        if (waitOnce())
            return;
    takeWaitKey();
}

}  // namespace

void wait() {
    const char* word = nextArgument(kOptional);
    int64_t remaining = word != nullptr ? toSigned(word) : 0;
    output("TamTest: waiting - enter blank or CR to continue, ESC to exit scripts\n");
    if (remaining == 0) {
        while (!keyStruck())
            scannerlink::checkStatus();
    }
    for (; remaining > 0 && !keyStruck(); remaining -= scannerlink::kPassMs)
        scannerlink::checkStatus();
    if (keyStruck())
        takeWaitKey();
}

void eventWait() {
    const char* codeWord = nextArgument(kMandatory);
    const char* stateWord = codeWord != nullptr ? nextArgument(kMandatory) : nullptr;
    if (stateWord == nullptr)
        return;
    const uint32_t code = toUnsigned(codeWord);
    const auto wantedState = static_cast<int32_t>(toSigned(stateWord));
    const uint32_t tagValue = wantedTag();
    if (code >= scannerlink::kReportCodes) {
        output("TamTest: no status has code %" PRIu32 ", codes end at %" PRIu32 "\n", code,
               scannerlink::kReportCodes - 1);
        return;
    }
    output(
        "TamTest: waiting for scanner status event\n"
        "         enter blank or CR to abandon wait or ESC to exit scripts\n");
    repeatUntilKey([&] { return scannerlink::waitForStatus(code, wantedState, tagValue, kEventPollMs); });
}

void captureWait() {
    const char* codeWord = nextArgument(kMandatory);
    if (codeWord == nullptr)
        return;
    const uint32_t progress = toUnsigned(codeWord);
    const uint32_t tagValue = wantedTag();
    output(
        "TamTest: waiting for capture progress message\n"
        "         enter any char to abandon wait or ESC to exit scripts\n");
    repeatUntilKey([&] { return scannerlink::waitForCaptureProgress(progress, tagValue, kEventPollMs); });
}

void tag() {
    if (const char* word = nextArgument(kOptional))
        scannerlink::state.nextTag = toUnsigned(word);
    output("NEXT TAG: %" PRId32 "\n", static_cast<int32_t>(scannerlink::state.nextTag));
}

void keyboardEnable() {
    if (const char* word = nextArgument(kOptional))
        state.keyboardEnabled = toUnsigned(word);
    output("KbhitEnabled: %" PRId32 "\n", static_cast<int32_t>(state.keyboardEnabled));
}

uint32_t getVersion(char* text, size_t size) {
    platform::ProgramVersion version;
    if (!platform::programVersion(version))
        return kNoVersion;
    if (size < kLeastVersionSize)
        return kVersionBufferTooSmall;
    std::snprintf(text, size, "%u.%u.%u.%u", version.most >> 16, version.most & 0xFFFF, version.least >> 16,
                  version.least & 0xFFFF);
    return 0;
}

void fileVersion() {
    char text[kVersionSize] = {};
    if (getVersion(text, sizeof text) == 0)
        output("TamTest version %s\n", text);
    else
        output("*** ERROR: getVersion\n");
    if (HoxiGetVersion(text, sizeof text) == 0) {
        text[sizeof text - 1] = '\0';
        output("HOXI DLL version %s\n", text);
    } else {
        output("*** ERROR: HOXI GetVersion\n");
    }
}

}  // namespace console
