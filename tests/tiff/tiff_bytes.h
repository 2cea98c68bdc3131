// Small TIFF files made by hand, so that a test says exactly what is in its file. What is not said is an uncompressed
// 8-bit gray image in one strip, 0 black, without resolution.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tifffile {

enum Tag : uint16_t {
    kWidth = 256,
    kHeight = 257,
    kBits = 258,
    kCompression = 259,
    kPhotometric = 262,
    kStripOffsets = 273,
    kSamples = 277,
    kRowsPerStrip = 278,
    kStripByteCounts = 279,
    kXResolution = 282,
    kYResolution = 283,
    kResolutionUnit = 296,
    kColorMap = 320,
    kExtraSamples = 338,
    kSampleFormat = 339,
};

class TiffBytes {
public:
    TiffBytes(uint32_t width, uint32_t height, std::string pixels);

    TiffBytes& bigEndian();
    TiffBytes& rowsPerStrip(uint32_t rows);
    TiffBytes& set(Tag tag, uint16_t value);
    TiffBytes& setMany(Tag tag, size_t count, uint16_t value);
    TiffBytes& setLong(Tag tag, uint32_t value);
    TiffBytes& setRational(Tag tag, uint32_t numerator, uint32_t denominator);
    TiffBytes& remove(Tag tag);

    // Header, pixels, then the directory and what does not fit into it.
    std::string bytes() const;

private:
    struct Field {
        uint16_t type;
        std::vector<uint32_t> values;
    };

    std::string number(uint32_t value, int width) const;
    std::string dataOf(const Field& field) const;

    bool bigEndian_ = false;
    std::string pixels_;
    std::map<uint16_t, Field> fields_;
};

}  // namespace tifffile
