// A block of bytes that may be too large to be had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace operations {

class ByteBuffer {
public:
    // A zeroed block; empty when size is 0 or there is not that much memory.
    explicit ByteBuffer(uint64_t size)
        : bytes_(size > 0 && size <= SIZE_MAX ? static_cast<uint8_t*>(std::calloc(size, 1)) : nullptr),
          size_(bytes_ ? static_cast<size_t>(size) : 0) {}

    bool empty() const { return size_ == 0; }
    std::span<uint8_t> bytes() { return {bytes_.get(), size_}; }

private:
    struct Free {
        void operator()(uint8_t* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<uint8_t[], Free> bytes_;
    size_t size_;
};

}  // namespace operations
