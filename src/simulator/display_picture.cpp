#include "simulator/display_picture.h"

#include <fstream>

#include "platform/new_file.h"

namespace simulator {

namespace {

constexpr uint32_t kMapLines = 64;

// TIFF 6.0, section 2: numbers are little-endian; an entry of the directory is tag, type, count and value.
constexpr uint32_t kShort = 3;
constexpr uint32_t kLong = 4;
constexpr uint32_t kRational = 5;
constexpr uint32_t kEntryCount = 12;
constexpr uint32_t kDirectory = 8;
constexpr uint32_t kBehindDirectory = kDirectory + 2 + 12 * kEntryCount + 4;
constexpr uint32_t kBits = kBehindDirectory;
constexpr uint32_t kResolution = kBits + 6;
constexpr uint32_t kPixels = kResolution + 8;
constexpr uint32_t kDotsPerInch = 96;

void append(std::string& file, uint32_t value, int byteCount) {
    for (int i = 0; i < byteCount; ++i) {
        file.push_back(static_cast<char>(static_cast<uint8_t>(value >> (8 * i))));
    }
}

void appendEntry(std::string& file, uint32_t tag, uint32_t type, uint32_t count, uint32_t value) {
    append(file, tag, 2);
    append(file, type, 2);
    append(file, count, 4);
    append(file, value, 4);
}

// Everything before the pixels, with room for them.
std::string tiffHeader(uint32_t width, uint32_t height) {
    const uint32_t byteCount = width * height * 3;
    std::string file = "II";
    file.reserve(kPixels + byteCount);
    append(file, 42, 2);
    append(file, kDirectory, 4);
    append(file, kEntryCount, 2);
    appendEntry(file, 256, kLong, 1, width);
    appendEntry(file, 257, kLong, 1, height);
    appendEntry(file, 258, kShort, 3, kBits);
    appendEntry(file, 259, kShort, 1, 1);  // not compressed
    appendEntry(file, 262, kShort, 1, 2);  // red, green, blue
    appendEntry(file, 273, kLong, 1, kPixels);
    appendEntry(file, 277, kShort, 1, 3);
    appendEntry(file, 278, kLong, 1, height);  // one strip
    appendEntry(file, 279, kLong, 1, byteCount);
    appendEntry(file, 282, kRational, 1, kResolution);
    appendEntry(file, 283, kRational, 1, kResolution);
    appendEntry(file, 296, kShort, 1, 2);  // inches
    append(file, 0, 4);
    for (int color = 0; color < 3; ++color) {
        append(file, 8, 2);
    }
    append(file, kDotsPerInch, 4);
    append(file, 1, 4);
    return file;
}

void appendColor(std::string& file, uint32_t color) {
    for (const int shift : {16, 8, 0}) {
        append(file, color >> shift, 1);
    }
}

}  // namespace

std::string displayPicture(const LocalDisplay& display) {
    std::string file = tiffHeader(kDisplayWidth, kDisplayHeight);
    for (const uint8_t pixel : display.pixels()) {
        appendColor(file, display.isOn() ? display.palette()[pixel] : 0);
    }
    return file;
}

std::string mapPicture(const GrayMap& map) {
    std::string file = tiffHeader(map.size(), 2 * kMapLines);
    for (const GrayMap& grays : {identityMap(), map}) {
        for (uint32_t line = 0; line < kMapLines; ++line) {
            for (const uint8_t gray : grays) {
                appendColor(file, gray * 0x010101U);
            }
        }
    }
    return file;
}

bool savePicture(const std::string& picture, const std::string& path) {
    platform::NewFile newFile(path);
    std::ofstream file(newFile.path(), std::ios::binary);
    file.write(picture.data(), static_cast<std::streamsize>(picture.size()));
    file.close();
    return file && newFile.keep();
}

}  // namespace simulator
