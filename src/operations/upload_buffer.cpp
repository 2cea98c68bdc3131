#include "operations/upload_buffer.h"

namespace operations {
namespace {

uint32_t words[kUploadBufferSize / sizeof(uint32_t)];

}  // namespace

std::span<uint8_t> uploadBuffer() {
    return {reinterpret_cast<uint8_t*>(words), kUploadBufferSize};
}

std::span<uint32_t> uploadWords() {
    return words;
}

}  // namespace operations
