// Files and libtiff handles that close themselves. A handle says nothing on standard error and takes no more memory
// at once than it is allowed.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace tifffile {

class FileDescriptor {
public:
    explicit FileDescriptor(int number) : number_(number) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;

    bool open() const { return number_ >= 0; }
    int number() const { return number_; }
    // False when the system says that something was lost.
    bool close();

private:
    int number_;
};

// Frees the handle and leaves its file open.
struct HandleCleanup {
    void operator()(TIFF* handle) const { TIFFCleanup(handle); }
};
using TiffHandle = std::unique_ptr<TIFF, HandleCleanup>;

// Null when libtiff finds nothing it can use. The file must live longer; mode is libtiff's.
TiffHandle openTiff(const FileDescriptor& file, const char* mode, uint64_t mostMemory);

}  // namespace tifffile
