#include "operations/eeprom_write_test.h"

#include <cstdint>
#include <optional>

#include "console/keyboard_poll.h"
#include "console/output.h"
#include "console/scripts.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "link/status_check.h"
#include "link/waits.h"
#include "operations/command_catalogue.h"

namespace operations {
namespace {

using console::consolePrint;

constexpr int kLastAddress = 8191;
constexpr uint32_t kPollMs = 100;

// The next address of the line; none when it is missing, or too large, which is said.
std::optional<uint16_t> readAddress(const char* tooLarge) {
    const char* word = console::nextArgument(console::kMandatory);
    if (word == nullptr)
        return std::nullopt;
    const auto address = static_cast<uint16_t>(console::toUnsigned(word));
    if (address <= kLastAddress)
        return address;
    consolePrint(tooLarge, kLastAddress);
    return std::nullopt;
}

// Whether the command has ended without being complete, or its end will never be heard of.
bool failedOrLost(uint32_t tag) {
    const uint32_t scanner = scannerlink::state.currentScanner;
    const auto report = scannerlink::heldReport(scanner, hoxi::STA_COMMAND);
    const bool ended = report && report->tag == tag && report->state != hoxi::kPending &&
                       report->state != hoxi::kInProgress && report->state != hoxi::kComplete;
    return ended || !scannerlink::isServed(scanner);
}

// The key that ends the wait: ESC fails it and leaves all scripts, with any other the command is taken for complete.
bool takenForComplete() {
    if (console::readStruckKey() != platform::kEscapeKey)
        return true;
    console::leaveAllScripts();
    return false;
}

// Waits until the command of the tag is complete.
bool completedOrAbandoned(uint32_t tag) {
    consolePrint(
        "TamTest: waiting for scanner status event\n"
        "         enter blank or CR to abandon wait or ESC to exit scripts\n");
    for (;;) {
        if (console::keyStruck())
            return takenForComplete();
        if (scannerlink::waitForStatus(hoxi::STA_COMMAND, hoxi::kComplete, tag, kPollMs))
            return true;
        if (failedOrLost(tag))
            return false;
    }
}

bool write(uint16_t address, uint8_t value) {
    const uint32_t tag = scannerlink::takeTag();
    const uint32_t arguments[] = {address, value};
    return sendLayout(layouts::kEepromWrite, tag, arguments) && completedOrAbandoned(tag);
}

}  // namespace

void eepromWriteTest() {
    const auto start = readAddress("Start address too large, last address == %d\n");
    const auto end = start ? readAddress("End address too large, last address == %d\n") : std::nullopt;
    const char* seed = end ? console::nextArgument(console::kMandatory) : nullptr;
    if (seed == nullptr)
        return;
    auto pattern = static_cast<uint8_t>(console::toUnsigned(seed));
    for (uint16_t address = *start; address < *end; ++address, ++pattern)
        if (!write(address, pattern)) {
            // The address stands where the text says pattern, and the other way round: scripts rely on it.
            consolePrint("Failed Write of pattern 0x%x to address  0x%x\n", address, pattern);
            return;
        }
}

}  // namespace operations
