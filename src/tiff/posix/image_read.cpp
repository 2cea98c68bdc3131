#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "tiff/image_file.h"
#include "tiff/image_rules.h"
#include "tiff/posix/tiff_handle.h"

namespace tifffile {
namespace {

// m: no mapping, so that a file that shrinks meanwhile is a failed read, not a signal, and so that libtiff reads
// uncompressed strips straight into the buffer it is given. c: the strips as they are in the file, not chopped.
const char kReadMode[] = "rmc";

// Beside what a file holds itself, the tables of its strips at most, libtiff needs little.
constexpr uint64_t kSpareMemory = uint64_t{16} << 20;
constexpr uint64_t kMemoryPerByte = 4;
// Tiles may stand out over the edges of a small image.
constexpr uint64_t kSpareTile = uint64_t{64} << 20;

struct OpenImage {
    FileDescriptor file;
    uint64_t fileSize = 0;
    TiffHandle handle = nullptr;  // null: no TIFF file
};

// A pipe without a writer must not hold the caller up, hence O_NONBLOCK; files do not mind.
OpenImage openImage(const char* fileName) {
    OpenImage image{FileDescriptor(::open(fileName, O_RDONLY | O_CLOEXEC | O_NONBLOCK))};
    struct stat status {};
    if (!image.file.open() || ::fstat(image.file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return image;
    image.fileSize = static_cast<uint64_t>(status.st_size);
    image.handle = openTiff(image.file, kReadMode, kMemoryPerByte * image.fileSize + kSpareMemory);
    return image;
}

template <typename Number>
Number field(TIFF* handle, uint32_t tag) {
    Number value{};
    return TIFFGetFieldDefaulted(handle, tag, &value) == 1 ? value : Number{};
}

bool isWhiteZero(TIFF* handle) {
    uint16_t photometric = PHOTOMETRIC_MINISBLACK;
    TIFFGetField(handle, TIFFTAG_PHOTOMETRIC, &photometric);
    return photometric == PHOTOMETRIC_MINISWHITE;
}

bool isGray8(TIFF* handle) {
    uint16_t photometric = 0;
    if (TIFFGetField(handle, TIFFTAG_PHOTOMETRIC, &photometric) != 1)
        return false;
    const auto format = field<uint16_t>(handle, TIFFTAG_SAMPLEFORMAT);
    return (photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE) &&
           field<uint16_t>(handle, TIFFTAG_BITSPERSAMPLE) == 8 &&
           field<uint16_t>(handle, TIFFTAG_SAMPLESPERPIXEL) == 1 &&
           (format == SAMPLEFORMAT_UINT || format == SAMPLEFORMAT_VOID);
}

uint16_t resolution(TIFF* handle, uint32_t tag) {
    float value = 0;
    if (TIFFGetField(handle, tag, &value) != 1)
        return 0;
    switch (field<uint16_t>(handle, TIFFTAG_RESOLUTIONUNIT)) {
        case RESUNIT_INCH:
            return dotsPerInch(value, ResolutionUnit::inch);
        case RESUNIT_CENTIMETER:
            return dotsPerInch(value, ResolutionUnit::centimeter);
        default:
            return dotsPerInch(value, ResolutionUnit::none);
    }
}

bool describe(const OpenImage& image, TiffFileInfo& info) {
    TIFF* handle = image.handle.get();
    if (handle == nullptr || !isGray8(handle))
        return false;
    const auto width = field<uint32_t>(handle, TIFFTAG_IMAGEWIDTH);
    const auto height = field<uint32_t>(handle, TIFFTAG_IMAGELENGTH);
    const uint32_t byteCount = imageByteCount(width, height);
    const uint64_t expansion = expansionOf(field<uint16_t>(handle, TIFFTAG_COMPRESSION));
    if (byteCount == 0 || expansion == 0 || !canHold(image.fileSize, byteCount, expansion))
        return false;
    info = {8, width, height, resolution(handle, TIFFTAG_XRESOLUTION), resolution(handle, TIFFTAG_YRESOLUTION), 1, 0};
    return true;
}

bool readStrips(TIFF* handle, uint8_t* pixels, uint32_t byteCount) {
    const auto stripSize = static_cast<uint64_t>(TIFFStripSize64(handle));
    uint64_t done = 0;
    for (uint32_t strip = 0; done < byteCount; ++strip) {
        const auto size = static_cast<tmsize_t>(std::min(stripSize, byteCount - done));
        if (size == 0 || TIFFReadEncodedStrip(handle, strip, pixels + done, size) != size)
            return false;
        done += static_cast<uint64_t>(size);
    }
    return true;
}

struct Freed {
    void operator()(uint8_t* bytes) const { std::free(bytes); }
};

// What of a tile lies inside the image is copied row by row.
bool readTiles(TIFF* handle, uint8_t* pixels, const TiffFileInfo& info) {
    const auto tileWidth = field<uint32_t>(handle, TIFFTAG_TILEWIDTH);
    const auto tileHeight = field<uint32_t>(handle, TIFFTAG_TILELENGTH);
    const uint64_t tileSize = uint64_t{tileWidth} * tileHeight;
    if (tileSize == 0 || tileSize > imageByteCount(info.width, info.height) + kSpareTile)
        return false;
    const std::unique_ptr<uint8_t, Freed> tile(static_cast<uint8_t*>(std::malloc(tileSize)));
    if (!tile)
        return false;
    for (uint64_t top = 0; top < info.height; top += tileHeight)
        for (uint64_t left = 0; left < info.width; left += tileWidth) {
            const uint32_t index =
                TIFFComputeTile(handle, static_cast<uint32_t>(left), static_cast<uint32_t>(top), 0, 0);
            const auto size = static_cast<tmsize_t>(tileSize);
            if (TIFFReadEncodedTile(handle, index, tile.get(), size) != size)
                return false;
            const uint64_t rows = std::min<uint64_t>(tileHeight, info.height - top);
            const uint64_t columns = std::min<uint64_t>(tileWidth, info.width - left);
            for (uint64_t row = 0; row < rows; ++row)
                std::memcpy(pixels + (top + row) * info.width + left, tile.get() + row * tileWidth, columns);
        }
    return true;
}

}  // namespace

bool readInfo(const char* fileName, TiffFileInfo& info) {
    return describe(openImage(fileName), info);
}

Outcome readPixels(const char* fileName, uint8_t* pixels) {
    const OpenImage image = openImage(fileName);
    TiffFileInfo info{};
    if (!describe(image, info))
        return Outcome::notOpened;
    TIFF* handle = image.handle.get();
    const uint32_t byteCount = imageByteCount(info.width, info.height);
    const bool tiled = TIFFIsTiled(handle) != 0;
    if (!(tiled ? readTiles(handle, pixels, info) : readStrips(handle, pixels, byteCount)))
        return Outcome::failed;
    if (isWhiteZero(handle))
        std::transform(pixels, pixels + byteCount, pixels, [](uint8_t pixel) { return static_cast<uint8_t>(~pixel); });
    return Outcome::done;
}

}  // namespace tifffile
