// Images between TIFF files and memory, with what there is to say when it fails. Main thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "hoxi/ovktiff.h"
#include "operations/byte_buffer.h"

namespace operations {

// Prints what a result of the TIFF library other than 0 means. True for 0.
bool tiffDone(int32_t result);

// The file's record and byte count; none after a message with the name to tell.
struct TiffImageInfo {
    TiffFileInfo record;
    uint32_t byteCount;
};
std::optional<TiffImageInfo> readTiffInfo(const std::string& fileName, const std::string& nameToTell);
inline std::optional<TiffImageInfo> readTiffInfo(const std::string& fileName) {
    return readTiffInfo(fileName, fileName);
}

// Reads the pixels of the file whose record was read into the buffer of its byte count; false after a message.
bool readTiffPixels(const std::string& fileName, ByteBuffer& buffer);

}  // namespace operations
