#include "operations/command_catalogue.h"

#include <algorithm>
#include <iterator>

#include "console/tokenizer.h"
#include "link/command_channel.h"
#include "link/link_state.h"

namespace operations {
namespace {

static_assert(isSound(layouts::kDisplayImage) && isSound(layouts::kQuerySwitch) && isSound(layouts::kXmtSerial) &&
              isSound(layouts::kSetStatusLeds));

constexpr uint32_t kDefaultRepeats = 1;
constexpr uint32_t kDefaultWhite = 255;
constexpr uint32_t kMaxTones = 3;
constexpr size_t kMaxSerialBytes = 32;
static_assert(argumentCount(layouts::kQuerySwitch) == 3 + 2 * kMaxTones);
static_assert(argumentCount(layouts::kXmtSerial) == 2 + kMaxSerialBytes);

// The number of arguments that were there; the others are left as they are.
size_t readOptional(std::span<uint32_t> arguments) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const char* word = console::nextArgument(console::kOptional);
        if (word == nullptr)
            return i;
        arguments[i] = console::toUnsigned(word);
    }
    return arguments.size();
}

}  // namespace

bool sendLayout(const CommandLayout& layout, uint32_t tag, std::span<const uint32_t> arguments) {
    const Packet packet = buildPacket(layout, tag, arguments);
    return scannerlink::sendCommand(packet.bytes.data(), static_cast<uint32_t>(packet.length)) != 0;
}

void sendWithArguments(const CommandLayout& layout, std::span<uint32_t> arguments) {
    const uint32_t tag = scannerlink::takeTag();
    if (console::nextNumbers(arguments))
        sendLayout(layout, tag, arguments);
}

// Handle, scan type and image type; then repeats, quality and offset as far as they are there; then the white level,
// which an offset makes mandatory.
void displayImage() {
    const uint32_t tag = scannerlink::takeTag();
    std::array<uint32_t, argumentCount(layouts::kDisplayImage)> arguments{
        0, 0, 0, kDefaultRepeats, 0, 0, kDefaultWhite};
    const std::span all(arguments);
    if (!console::nextNumbers(all.first<3>()))
        return;
    const bool offsetGiven = readOptional(all.subspan<3, 3>()) == 3;
    if (offsetGiven && !console::nextNumbers(all.last<1>()))
        return;
    sendLayout(layouts::kDisplayImage, tag, arguments);
}

// The prompt is sent as entered; no more tones are taken than the packet has room for.
void querySwitch() {
    const uint32_t tag = scannerlink::takeTag();
    std::array<uint32_t, argumentCount(layouts::kQuerySwitch)> arguments{};
    const std::span all(arguments);
    if (!console::nextNumbers(all.first<3>()))
        return;
    const std::span frequencies = all.subspan<3, kMaxTones>();
    const std::span durations = all.last<kMaxTones>();
    const uint32_t tones = std::min(arguments[2], kMaxTones);
    for (uint32_t i = 0; i < tones; ++i)
        if (!console::nextNumbers(frequencies.subspan(i, 1)) || !console::nextNumbers(durations.subspan(i, 1)))
            return;
    sendLayout(layouts::kQuerySwitch, tag, arguments);
}

// Everything behind the port is a data byte, also what the syntax calls a count: the count sent is the tester's own.
void transmitSerial() {
    const uint32_t tag = scannerlink::takeTag();
    std::array<uint32_t, argumentCount(layouts::kXmtSerial)> arguments{};
    const std::span all(arguments);
    if (!console::nextNumbers(all.first<1>()))
        return;
    arguments[1] = static_cast<uint32_t>(readOptional(all.last<kMaxSerialBytes>()));
    sendLayout(layouts::kXmtSerial, tag, arguments);
}

// The line begins with the three capture states and goes from left to right; the payload ends with them and has the
// thumbs behind the fingers.
void setStatusLeds() {
    static constexpr size_t kLineOrder[] = {3, 4, 5, 6, 9, 10, 11, 12, 7, 8, 0, 2, 1};
    const uint32_t tag = scannerlink::takeTag();
    std::array<uint32_t, std::size(kLineOrder)> entered{};
    if (!console::nextNumbers(entered))
        return;
    std::array<uint32_t, std::size(kLineOrder)> states{};
    std::transform(std::begin(kLineOrder), std::end(kLineOrder), states.begin(),
                   [&](size_t place) { return entered[place]; });
    sendLayout(layouts::kSetStatusLeds, tag, states);
}

}  // namespace operations
