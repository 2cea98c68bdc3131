// The steps of operations that move data. Each prints the text that it is given when it fails, and is then false. Main
// thread only.
#pragma once

#include <cstdint>

#include "hoxi/hoxi.h"

namespace operations {

// The first word of a transfer report when the scanner is ready.
inline constexpr uint32_t kTransferReady = 1;

// Waits for a transfer report of this status code, value and tag.
bool confirmed(uint32_t code, uint32_t value, uint32_t tag, uint32_t timeoutMs, const char* otherwise);

// Waits until the command of this tag is complete.
bool completed(uint32_t tag, uint32_t timeoutMs, const char* otherwise);

// Looks at the result of a transfer; that of a failed one becomes the error flag.
bool transferred(HoxiResult result, const char* otherwise);

}  // namespace operations
