#include "operations/display_setup.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "console/output.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/block_transfer.h"
#include "link/command_channel.h"
#include "operations/bitmap_file.h"
#include "operations/display_tables.h"
#include "operations/palette_file.h"
#include "operations/tiff_image.h"
#include "operations/transfer_steps.h"
#include "operations/value_file.h"

namespace operations {
namespace {

using console::kMandatory;
using console::nextArgument;
using console::output;
using scannerlink::CommandHeader;
using scannerlink::nextCommand;
using scannerlink::sendCommand;

constexpr size_t kLocalMapsSize = 2 * kMapSize;
constexpr uint32_t kPaletteWaitMs = 10000;

struct PaletteCommand {
    CommandHeader header;
    uint32_t entries;
};
static_assert(sizeof(PaletteCommand) == 16);

// Sent as 64 bytes, zeros behind the payload, whatever its size field says.
struct BitmapCommand {
    CommandHeader header;
    uint32_t horizontal;
    uint32_t vertical;
    uint32_t width;
    uint32_t height;
    uint8_t unused[36];
};
static_assert(sizeof(BitmapCommand) == 64);

constexpr char kPutFailed[] = "TamTest: failed in HoxiPutMemory\n";

// In blocks. False after a message.
bool putData(scannerlink::PutFunction put, std::span<const uint8_t> data) {
    return transferred(scannerlink::putBlocks(put, data), kPutFailed);
}

// In one call, whatever the block size: the tables are smaller than any scanner's.
void putTable(std::span<const uint8_t> table) {
    transferred(scannerlink::putWhole(HoxiPutMemory, table), kPutFailed);
}

void sendTable(const CommandHeader& command, std::span<const uint8_t> table) {
    if (sendCommand(&command, sizeof command))
        putTable(table);
}

size_t readTextMap(const std::string& name, std::span<uint8_t> table) {
    size_t count = 0;
    readValueWords(name, [&](const char* word) {
        table[count++] = static_cast<uint8_t>(console::toUnsigned(word));
        return count < table.size();
    });
    return count;
}

// Returns the bytes read, 0 after a message.
size_t readMapFile(const std::string& name, std::span<uint8_t> table) {
    const bool text = valueForm(name) == ValueForm::text;
    const size_t count = text ? readTextMap(name, table) : readValueBytes(name, table);
    if (count >= 2)
        return count;
    output("TamTest: failed reading map tables from %s\n", name.c_str());
    return 0;
}

// The table goes to the scanner even when the file gave nothing, then without its command: to a scanner that still
// waits for other data, the table is what it was waiting for.
void sendMapFile(const CommandHeader& command, const char* name, std::span<uint8_t> table) {
    if (readMapFile(name, table) > 0 && !sendCommand(&command, sizeof command))
        return;
    putTable(table);
}

std::span<const uint8_t> bytesOf(std::span<const uint32_t> words) {
    return {reinterpret_cast<const uint8_t*>(words.data()), words.size_bytes()};
}

void sendPaletteEntry(PaletteCommand command, const char* index) {
    std::array<uint32_t, 3> levels{};
    if (!console::nextNumbers(levels))
        return;
    const uint32_t entry[] = {paletteEntry(console::toUnsigned(index), levels[0], levels[1], levels[2])};
    command.entries = 1;
    if (sendCommand(&command, sizeof command))
        putTable(bytesOf(entry));
}

void sendPaletteFile(PaletteCommand command, const std::string& name) {
    const auto entries = readPaletteFile(name);
    if (!entries)
        return;
    command.entries = static_cast<uint32_t>(entries->size());
    if (!sendCommand(&command, sizeof command))
        return;
    const uint32_t tag = command.header.tag;
    if (confirmed(hoxi::STA_MEMORY_XFER, kTransferReady, tag, kPaletteWaitMs,
                  "TamTest: didn't get get_parm confirmation status\n") &&
        putData(HoxiPutMemory, bytesOf(*entries)))
        completed(tag, kPaletteWaitMs, "TamTest: didn't get cfg_lcp cmd complete status\n");
}

// The line of both bitmap operations: a file and a position. Returns the file's name, null when a word is missing.
const char* beginBitmap(BitmapCommand& command) {
    command.header = nextCommand(hoxi::CMD_WRITE_LOCAL_DISPLAY, 16);
    const char* name = nextArgument(kMandatory);
    std::array<uint32_t, 2> position{};
    if (name == nullptr || !console::nextNumbers(position))
        return nullptr;
    command.horizontal = position[0];
    command.vertical = position[1];
    return name;
}

void sendBitmap(BitmapCommand& command, uint32_t width, uint32_t height, std::span<const uint8_t> pixels) {
    command.width = width;
    command.height = height;
    if (sendCommand(&command, sizeof command))
        putData(HoxiPutBitmap, pixels);
}

}  // namespace

void configRemoteMap() {
    const CommandHeader command = nextCommand(hoxi::CMD_CONFIG_REMOTE_MAP);
    const char* argument = nextArgument(kMandatory);
    if (argument == nullptr)
        return;
    if (console::isNumber(argument)) {
        sendTable(command, remoteMap(console::toUnsigned(argument)));
    } else {
        MapTable table{};
        sendMapFile(command, argument, table);
    }
}

void configLocalMap() {
    const CommandHeader command = nextCommand(hoxi::CMD_CONFIG_LOCAL_MAP);
    const char* first = nextArgument(kMandatory);
    if (first == nullptr)
        return;
    std::array<uint8_t, kLocalMapsSize> table{};
    if (!console::isNumber(first)) {
        sendMapFile(command, first, table);
        return;
    }
    std::array<uint32_t, 3> rest{};
    if (!console::nextNumbers(rest))
        return;
    const LocalMaps maps = localMaps(console::toUnsigned(first), rest[0], rest[1], rest[2]);
    std::copy(maps.normal.begin(), maps.normal.end(), table.begin());
    std::copy(maps.quality.begin(), maps.quality.end(), table.begin() + kMapSize);
    sendTable(command, table);
}

void configLocalPalette() {
    const PaletteCommand command{nextCommand(hoxi::CMD_CONFIG_LOCAL_PALETTE, 4), 0};
    const char* argument = nextArgument(kMandatory);
    if (argument == nullptr)
        return;
    if (console::isNumber(argument))
        sendPaletteEntry(command, argument);
    else
        sendPaletteFile(command, argument);
}

void writeLocalDisplay() {
    BitmapCommand command{};
    const char* name = beginBitmap(command);
    BitmapFile bitmap;
    if (name == nullptr || !readBitmapFile(name, bitmap))
        return;
    halvePixels(bitmap.pixels.bytes());
    sendBitmap(command, bitmap.width, bitmap.height, bitmap.pixels.bytes());
}

void writeLocalOverlay() {
    BitmapCommand command{};
    const char* word = beginBitmap(command);
    if (word == nullptr)
        return;
    const std::string name = word;
    const auto info = readTiffInfo(name);
    if (!info)
        return;
    ByteBuffer image(info->byteCount);
    if (!readTiffPixels(name, image))
        return;
    reverseRows(image.bytes(), info->record.width, info->record.height);
    sendBitmap(command, info->record.width, info->record.height, image.bytes());
}

}  // namespace operations
