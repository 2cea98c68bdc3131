#include "operations/tiff_image.h"

#include "console/output.h"

namespace operations {
namespace {

using console::output;

constexpr int32_t kWriteFailed = -3;
constexpr int32_t kReadFailed = -2;

}  // namespace

bool tiffDone(int32_t result) {
    switch (result) {
        case 0:
            return true;
        case kWriteFailed:
            output("TamTest: Error writing TIFF file\n");
            return false;
        case kReadFailed:
            output("TamTest: Error reading TIFF file\n");
            return false;
        default:
            output("TamTest: Error opening TIFF file\n");
            return false;
    }
}

std::optional<TiffImageInfo> readTiffInfo(const std::string& fileName, const std::string& nameToTell) {
    TiffFileInfo record{};
    const int32_t byteCount = getTiffFileInfo(fileName.c_str(), &record);
    // The library may be another than ours: what it announces must be what it will write.
    if (byteCount > 0 && uint64_t{record.width} * record.height == static_cast<uint64_t>(byteCount))
        return TiffImageInfo{record, static_cast<uint32_t>(byteCount)};
    output("TamTest: can't open TIFF file %s\n", nameToTell.c_str());
    return std::nullopt;
}

bool readTiffPixels(const std::string& fileName, ByteBuffer& buffer) {
    if (buffer.empty()) {
        output("TamTest: image buffer allocation failed\n");
        return false;
    }
    return tiffDone(readTiffFile(fileName.c_str(), buffer.bytes().data()));
}

}  // namespace operations
