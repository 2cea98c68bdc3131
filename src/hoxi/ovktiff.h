// The TIFF library as programs see it: 8-bit gray images in files.
//
// The library is a separate shared file (OvkTiff.dll, libOvkTiff.so) found beside the program. Names, argument order
// and widths are frozen, since other programs and other libraries are built against them. C linkage. Buffers and
// records stay the caller's; nothing is kept between calls and nothing is printed. Any thread.
//
// A pixel is a byte, 0 black and 255 white, row after row from the top without padding. File names are in the
// system's own character set.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#if defined(OVKTIFF_BUILDING)
#define OVKTIFF_API __declspec(dllexport)
#else
#define OVKTIFF_API
#endif
#else
#define OVKTIFF_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef struct TiffFileInfo {
    uint32_t depth;  // bits per pixel: 8 when read; when written it is not looked at
    uint32_t width;  // pixels
    uint32_t height;
    uint16_t h_res;  // dots per inch, 0 when not known
    uint16_t v_res;
    uint8_t first;   // 1 when read; when written neither is looked at
    uint8_t second;  // 0 when read
} TiffFileInfo;

// Fills the record and returns the byte count of the image, width * height. 0 or less: the file cannot be used, and
// the record is as it was.
OVKTIFF_API int32_t getTiffFileInfo(const char* fileName, TiffFileInfo* info);

// Fills the buffer, which holds the byte count that getTiffFileInfo gave: the file must still be the same. 0, -2 when
// reading failed (the buffer may then hold a part of the image), -1 when the file cannot be opened or used.
OVKTIFF_API int32_t readTiffFile(const char* fileName, void* buffer);

// Writes the image. 0, -3 when writing failed, -1 when the file cannot be opened. A file appears whole or not at all:
// after a failure an older one of that name is as it was.
OVKTIFF_API int32_t writeTiffFile(const char* fileName, const void* buffer, const TiffFileInfo* info);

#ifdef __cplusplus
}

static_assert(sizeof(TiffFileInfo) == 20);
static_assert(offsetof(TiffFileInfo, width) == 4);
static_assert(offsetof(TiffFileInfo, height) == 8);
static_assert(offsetof(TiffFileInfo, h_res) == 12);
static_assert(offsetof(TiffFileInfo, v_res) == 14);
static_assert(offsetof(TiffFileInfo, first) == 16);
static_assert(offsetof(TiffFileInfo, second) == 17);
#endif
