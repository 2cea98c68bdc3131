// The one large buffer: files on their way to the scanner, and the values of parameter sets both ways. One operation
// uses it at a time. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace operations {

inline constexpr size_t kUploadBufferSize = 0x8000000;  // 128 MiB, larger than any scanner's flash

// Static and zero at first: the system gives memory only for what is touched.
std::span<uint8_t> uploadBuffer();

// The same memory as 32-bit words.
std::span<uint32_t> uploadWords();

}  // namespace operations
