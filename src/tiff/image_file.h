// What the library asks of a system: image files, read and written. One source per system; arguments have been
// checked. Nothing is printed and nothing thrown. Any thread.
#pragma once

#include <cstdint>

#include "hoxi/ovktiff.h"

namespace tifffile {

enum class Outcome { done, notOpened, failed };

// False when the file is no 8-bit gray image of a size that imageByteCount() accepts; the record is then as it was.
bool readInfo(const char* fileName, TiffFileInfo& info);

// The pixels of a file that readInfo() accepts; notOpened for any other.
Outcome readPixels(const char* fileName, uint8_t* pixels);

Outcome writePixels(const char* fileName, const uint8_t* pixels, const TiffFileInfo& info);

}  // namespace tifffile
