#include "tiff/image_file.h"
#include "tiff/image_rules.h"
#include "tiff/posix/new_file.h"
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

// One strip: libtiff hands the pixels to the system as they are, in one piece. It takes them as its own to change,
// but changes bytes of uncompressed images only on their way to another bit order.
bool writeStrip(TIFF* handle, const uint8_t* pixels, uint32_t byteCount) {
    const auto size = static_cast<tmsize_t>(byteCount);
    return TIFFWriteEncodedStrip(handle, 0, const_cast<uint8_t*>(pixels), size) == size;
}

bool writeImage(const FileDescriptor& file, const uint8_t* pixels, const TiffFileInfo& info) {
    const TiffHandle handle = openTiff(file, "w", kMostMemory);
    return handle && setLayout(handle.get(), info) && setResolution(handle.get(), info) &&
           writeStrip(handle.get(), pixels, imageByteCount(info.width, info.height)) &&
           TIFFWriteDirectory(handle.get()) == 1;
}

}  // namespace

Outcome writePixels(const char* fileName, const uint8_t* pixels, const TiffFileInfo& info) {
    NewFile newFile(fileName);
    if (!newFile.file().open())
        return Outcome::notOpened;
    return writeImage(newFile.file(), pixels, info) && newFile.keep() ? Outcome::done : Outcome::failed;
}

}  // namespace tifffile
