#include "operations/bitmap_file.h"

#include <cstdio>

#include "console/output.h"
#include "console/regular_file.h"

namespace operations {
namespace {

using console::consolePrint;

constexpr size_t kFileHeaderSize = 14;
constexpr uint64_t kMostPixels = 0x40000000;  // far beyond any display

struct InfoHeader {
    uint32_t size;
    uint32_t width;
    uint32_t height;
    uint32_t planesAndDepth;
    uint32_t compression;
    uint32_t imageSize;
    uint32_t horizontalResolution;
    uint32_t verticalResolution;
    uint32_t colorsUsed;  // 0 means all 256
    uint32_t colorsImportant;
};
static_assert(sizeof(InfoHeader) == 40);

using console::File;

bool readWhole(const File& file, void* buffer, size_t size) {
    return std::fread(buffer, 1, size, file.get()) == size;
}

bool failed(const char* format, const std::string& name) {
    consolePrint(format, name.c_str());
    return false;
}

bool allocatePixels(BitmapFile& bitmap) {
    const uint64_t count = uint64_t{bitmap.width} * bitmap.height;
    if (count <= kMostPixels)
        bitmap.pixels = ByteBuffer(count);
    return !bitmap.pixels.empty();
}

}  // namespace

bool readBitmapFile(const std::string& name, BitmapFile& bitmap) {
    const File file = console::openRegularFile(name, "rb");
    if (!file)
        return failed("TamTest: can't open %s\n", name);
    uint8_t fileHeader[kFileHeaderSize];
    if (!readWhole(file, fileHeader, sizeof fileHeader))
        return failed("TamTest: can't read file header from %s\n", name);
    InfoHeader info{};
    if (!readWhole(file, &info, sizeof info))
        return failed("TamTest: can't read info header from %s\n", name);
    bitmap.width = info.width;
    bitmap.height = info.height;
    if (!allocatePixels(bitmap)) {
        consolePrint("TamTest: can't allocate image");
        return false;
    }
    const uint64_t colors = info.colorsUsed == 0 ? bitmap.colors.size() : info.colorsUsed;
    if (colors > bitmap.colors.size() || !readWhole(file, bitmap.colors.data(), colors * sizeof(uint32_t)))
        return failed("TamTest: can't read color map from %s\n", name);
    if (!readWhole(file, bitmap.pixels.bytes().data(), bitmap.pixels.bytes().size()))
        return failed("TamTest: can't read image from %s\n", name);
    return true;
}

}  // namespace operations
