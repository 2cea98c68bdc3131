#include "operations/palette_file.h"

#include <array>
#include <cstring>

#include "console/output.h"
#include "console/tokenizer.h"
#include "operations/bitmap_file.h"
#include "operations/display_tables.h"
#include "operations/value_file.h"

namespace operations {
namespace {

using Entries = std::optional<std::vector<uint32_t>>;

Entries unusable() {
    console::output("TamTest: couldn't read cfg_lpalt entries\n");
    return std::nullopt;
}

Entries readBitmapPalette(const std::string& name) {
    BitmapFile bitmap;
    if (!readBitmapFile(name, bitmap))
        return std::nullopt;
    return bitmapPalette(bitmap.colors);
}

// Every four numbers are one entry: index, red, green, blue.
Entries readTextPalette(const std::string& name) {
    std::vector<uint32_t> entries;
    std::array<uint32_t, 4> numbers{};
    size_t count = 0;
    readValueWords(name, [&](const char* word) {
        numbers[count++] = console::toUnsigned(word);
        if (count == numbers.size()) {
            entries.push_back(paletteEntry(numbers[0], numbers[1], numbers[2], numbers[3]));
            count = 0;
        }
        return entries.size() <= kMostPaletteEntries;
    });
    if (entries.empty() || entries.size() > kMostPaletteEntries)
        return unusable();
    return entries;
}

Entries readBinaryPalette(const std::string& name) {
    std::array<uint8_t, kMostPaletteEntries * sizeof(uint32_t)> bytes{};
    std::vector<uint32_t> entries(readValueBytes(name, bytes) / sizeof(uint32_t));
    if (entries.empty())
        return unusable();
    std::memcpy(entries.data(), bytes.data(), entries.size() * sizeof(uint32_t));
    return entries;
}

bool isEmptyFile(const std::string& name) {
    uint8_t byte = 0;
    return readValueBytes(name, {&byte, 1}) == 0;
}

}  // namespace

Entries readPaletteFile(const std::string& name) {
    switch (valueForm(name)) {
        case ValueForm::unreadable:
            console::consolePrint("TamTest: can't open %s\n", name.c_str());
            return std::nullopt;
        case ValueForm::bitmap:
            return readBitmapPalette(name);
        case ValueForm::text:
            return readTextPalette(name);
        default:
            break;
    }
    if (isEmptyFile(name)) {
        console::consolePrint("TamTest: can't read file type from %s\n", name.c_str());
        return std::nullopt;
    }
    return readBinaryPalette(name);
}

}  // namespace operations
