// BMP pictures of 8 bits a pixel, as they are sent to the scanner's local display. Main thread only.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "operations/byte_buffer.h"

namespace operations {

struct BitmapFile {
    uint32_t width = 0;
    uint32_t height = 0;
    std::array<uint32_t, 256> colors{};  // 0x00RRGGBB, 0 beyond those of the file
    ByteBuffer pixels{0};                // width x height, rows as they stand in the file
};

// Reads header, colour map and pixels, which follow the colour map directly, rows of exactly width bytes. Neither
// signature nor depth, compression or pixel offset are looked at. False after a message on the console.
bool readBitmapFile(const std::string& name, BitmapFile& bitmap);

}  // namespace operations
