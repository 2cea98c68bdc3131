#include "support/fake_tiff.h"

#include <algorithm>
#include <numeric>

namespace support {
namespace {

FakeTiff fake;

}  // namespace

FakeTiff& fakeTiff() {
    return fake;
}

void resetFakeTiff() {
    fake = FakeTiff{};
}

FakeTiffFile makeTiff(uint32_t width, uint32_t height) {
    FakeTiffFile file;
    file.info = {.depth = 8, .width = width, .height = height, .h_res = 500, .v_res = 501, .first = 1, .second = 0};
    file.pixels.resize(size_t{width} * height);
    std::iota(file.pixels.begin(), file.pixels.end(), uint8_t{0});
    return file;
}

}  // namespace support

using support::fake;

int32_t getTiffFileInfo(const char* fileName, TiffFileInfo* info) {
    const auto file = fake.files.find(fileName);
    if (file == fake.files.end())
        return -1;
    *info = file->second.info;
    return static_cast<int32_t>(file->second.pixels.size()) + fake.byteCountError;
}

int32_t readTiffFile(const char* fileName, void* buffer) {
    const auto& pixels = fake.files.at(fileName).pixels;
    std::copy(pixels.begin(), pixels.end(), static_cast<uint8_t*>(buffer));
    return fake.readResult;
}

int32_t writeTiffFile(const char* fileName, const void* buffer, const TiffFileInfo* info) {
    const auto* begin = static_cast<const uint8_t*>(buffer);
    if (fake.writeResult == 0)
        fake.files[fileName] = {*info, {begin, begin + size_t{info->width} * info->height}};
    return fake.writeResult;
}
