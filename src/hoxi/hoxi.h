// The scanner access library as programs see it: the one road to the scanners.
//
// The library is a separate shared file (hoxitam1.dll, libhoxitam1.so) found beside the program; replacing the file
// replaces the scanner. Names, argument order and widths are frozen, since other programs and other libraries are
// built against them. C linkage, 64-bit little-endian hosts.
//
// Every call returns 0 for success. Scanners are addressed by index from 0. Buffers stay the caller's. HoxiGetStatus
// may be called from one thread per scanner while any other call runs; the video calls belong to the video thread.
#pragma once

#include <stdint.h>

#if defined(_WIN32)
#if defined(HOXI_BUILDING)
#define HOXI_API __declspec(dllexport)
#else
#define HOXI_API
#endif
#else
#define HOXI_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef uint32_t HoxiResult;

// Opens the library and counts the scanners on the bus. The tester passes 1000 as value.
HOXI_API HoxiResult HoxiInitialize(uint32_t value, uint32_t* scannerCount);
// Closes the library; a HoxiGetStatus that is under way ends with 9107 or 9101.
HOXI_API HoxiResult HoxiTerminate(void);
// Sizes in bytes; the third is the largest byte count of one image, memory or bitmap call.
HOXI_API HoxiResult HoxiGetBufSize(uint32_t scanner, uint64_t* first, uint64_t* second, uint64_t* dataBufSize);
// Queues one command packet of length bytes: code, tag, payload size (three 32-bit words), then the payload.
HOXI_API HoxiResult HoxiPutCommand(uint32_t scanner, const void* packet, uint32_t length, uint32_t* word);
// Blocks until a status report arrives, the library ends, or the get time-out passes where the library keeps to it;
// fills at most size bytes of the block.
HOXI_API HoxiResult HoxiGetStatus(uint32_t scanner, void* block, uint32_t size, uint32_t* length);
// Milliseconds; 0xFFFFFFFF is without limit.
HOXI_API HoxiResult HoxiSetTimeouts(uint32_t putMs, uint32_t getMs);
HOXI_API HoxiResult HoxiBreakEnable(uint32_t enable);
HOXI_API HoxiResult HoxiBusReset(void);
// Zero-terminated version text of the library, cut to size bytes.
HOXI_API HoxiResult HoxiGetVersion(char* text, uint32_t size);

// Data channels. Flag bit 1 marks the first block of a transfer, bit 2 the last.
HOXI_API HoxiResult HoxiPutMemory(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                                  uint32_t flags);
HOXI_API HoxiResult HoxiGetMemory(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred,
                                  uint32_t* flags);
HOXI_API HoxiResult HoxiPutImage(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                                 uint32_t flags);
HOXI_API HoxiResult HoxiGetImage(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred,
                                 uint32_t* flags);
HOXI_API HoxiResult HoxiPutBitmap(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                                  uint32_t flags);

// Isochronous video stream. Rows, columns, pitch, positions and lines count pixels; band size 0 means full frames.
HOXI_API HoxiResult HoxiSetVideoBandParams(uint32_t scanner, uint64_t bandSize, uint32_t value);
HOXI_API HoxiResult HoxiStartVideo(uint32_t scanner, uint64_t rows, uint64_t columns, uint64_t pitch,
                                   uint64_t* bufferSize);
HOXI_API HoxiResult HoxiSubmitVideoRequest(uint32_t scanner, void* buffer, uint64_t context);
HOXI_API HoxiResult HoxiGetVideoResult(uint32_t scanner, void** buffer, uint64_t* context);
HOXI_API HoxiResult HoxiGetVideoBandPosition(uint32_t scanner, uint64_t* position, void** pixels, uint64_t* lines);
HOXI_API HoxiResult HoxiStopVideo(uint32_t scanner);

#ifdef __cplusplus
}
#endif
