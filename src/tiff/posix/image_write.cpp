#include <fcntl.h>

#include "platform/new_file.h"
#include "tiff/image_file.h"
#include "tiff/image_rules.h"
#include "tiff/posix/tiff_handle.h"

namespace tifffile {
namespace {

constexpr uint64_t kMostMemory = uint64_t{1} << 20;

bool setLayout(TIFF* handle, const TiffFileInfo& info) {
    return TIFFSetField(handle, TIFFTAG_IMAGEWIDTH, info.width) == 1 &&
           TIFFSetField(handle, TIFFTAG_IMAGELENGTH, info.height) == 1 &&
           TIFFSetField(handle, TIFFTAG_BITSPERSAMPLE, 8) == 1 &&
           TIFFSetField(handle, TIFFTAG_SAMPLESPERPIXEL, 1) == 1 &&
           TIFFSetField(handle, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK) == 1 &&
           TIFFSetField(handle, TIFFTAG_COMPRESSION, COMPRESSION_NONE) == 1 &&
           TIFFSetField(handle, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == 1 &&
           TIFFSetField(handle, TIFFTAG_ROWSPERSTRIP, info.height) == 1;
}

// What is not known is left out.
bool setResolution(TIFF* handle, const TiffFileInfo& info) {
    const auto set = [handle](uint32_t tag, uint16_t dots) {
        return dots == 0 || TIFFSetField(handle, tag, static_cast<double>(dots)) == 1;
    };
    return TIFFSetField(handle, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH) == 1 && set(TIFFTAG_XRESOLUTION, info.h_res) &&
           set(TIFFTAG_YRESOLUTION, info.v_res);
}

// One strip of pixels as they are: libtiff hands them to the system in one piece, without a buffer of its own. It does
// not change them, whatever its parameter says.
bool writeStrip(TIFF* handle, const uint8_t* pixels, uint32_t byteCount) {
    const auto size = static_cast<tmsize_t>(byteCount);
    return TIFFWriteRawStrip(handle, 0, const_cast<uint8_t*>(pixels), size) == size;
}

bool writeImage(const FileDescriptor& file, const uint8_t* pixels, const TiffFileInfo& info) {
    const TiffHandle handle = openTiff(file, "w", kMostMemory);
    return handle && setLayout(handle.get(), info) && setResolution(handle.get(), info) &&
           writeStrip(handle.get(), pixels, imageByteCount(info.width, info.height)) &&
           TIFFWriteDirectory(handle.get()) == 1;
}

}  // namespace

Outcome writePixels(const char* fileName, const uint8_t* pixels, const TiffFileInfo& info) {
    platform::NewFile newFile(fileName);
    FileDescriptor file(::open(newFile.path().c_str(), O_RDWR | O_CLOEXEC));
    if (!file.open())
        return Outcome::notOpened;
    return writeImage(file, pixels, info) && file.close() && newFile.keep() ? Outcome::done : Outcome::failed;
}

}  // namespace tifffile
