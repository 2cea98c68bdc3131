#include "link/command_channel.h"

#include <cinttypes>
#include <cstring>

#include "console/console_state.h"
#include "console/output.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi.h"
#include "link/link_state.h"

namespace scannerlink {
namespace {

constexpr uint32_t kDefaultTimeoutMs = 1000;

void echoCommand(uint32_t scanner, const void* packet, uint32_t hoxiResult) {
    CommandHeader header;
    std::memcpy(&header, packet, sizeof header);
    console::output("scanner %" PRId32 " command: code=%" PRId32 ", tag=%" PRId32 ", size=%" PRId32
                    " - hoxirtn=%" PRId32 "\n",
                    static_cast<int32_t>(scanner), static_cast<int32_t>(header.code), static_cast<int32_t>(header.tag),
                    static_cast<int32_t>(header.size), static_cast<int32_t>(hoxiResult));
}

// A time-out of the line, the default when the word is not there.
uint32_t timeoutArgument() {
    const char* word = console::nextArgument(console::kOptional);
    return word != nullptr ? console::toUnsigned(word) : kDefaultTimeoutMs;
}

}  // namespace

CommandHeader nextCommand(uint32_t code, uint32_t size) {
    return {.code = code, .tag = takeTag(), .size = size};
}

int sendCommandToScanner(uint32_t scanner, const void* packet, uint32_t length, uint32_t resultWord) {
    const HoxiResult result = HoxiPutCommand(scanner, packet, length, &resultWord);
    if (result != 0) {
        console::flagError(result);
        console::output("TamTest: Failure in HoxiPutCommand - %" PRId32 "\n", static_cast<int32_t>(result));
        return 0;
    }
    if (state.quiet == 0)
        echoCommand(scanner, packet, result);
    return 1;
}

int sendCommand(const void* packet, uint32_t length, uint32_t resultWord) {
    return sendCommandToScanner(state.currentScanner, packet, length, resultWord);
}

void setTimeouts() {
    const uint32_t putMs = timeoutArgument();
    const uint32_t getMs = timeoutArgument();
    console::nextArgument(console::kOptional);
    const HoxiResult result = HoxiSetTimeouts(putMs, getMs);
    if (result == 0)
        return;
    console::output("TamTest: HoxiSetTimeouts returned %" PRId32 "\n", static_cast<int32_t>(result));
    console::flagError(result);
}

void enableBreak() {
    const char* word = console::nextArgument(console::kOptional);
    console::nextArgument(console::kOptional);
    HoxiBreakEnable(word != nullptr && console::toUnsigned(word) != 0 ? 1 : 0);
}

void busReset() {
    const HoxiResult result = HoxiBusReset();
    if (result == 0)
        return;
    console::flagError(result);
    console::output("TamTest: failure in HoxiBusReset\n");
}

}  // namespace scannerlink
