#include "tiff/tiff_bytes.h"

#include <algorithm>
#include <utility>

namespace tifffile {
namespace {

constexpr uint16_t kShort = 3;
constexpr uint16_t kLong = 4;
constexpr uint16_t kRational = 5;
constexpr uint32_t kHeaderSize = 8;
constexpr uint32_t kEntrySize = 12;

}  // namespace

TiffBytes::TiffBytes(uint32_t width, uint32_t height, std::string pixels) : pixels_(std::move(pixels)) {
    setLong(kWidth, width).setLong(kHeight, height).set(kBits, 8).set(kCompression, 1).set(kPhotometric, 1);
    set(kSamples, 1).rowsPerStrip(height);
}

TiffBytes& TiffBytes::bigEndian() {
    bigEndian_ = true;
    return *this;
}

TiffBytes& TiffBytes::set(Tag tag, uint16_t value) {
    return setMany(tag, 1, value);
}

TiffBytes& TiffBytes::setMany(Tag tag, size_t count, uint16_t value) {
    fields_[tag] = {kShort, std::vector<uint32_t>(count, value)};
    return *this;
}

TiffBytes& TiffBytes::setLong(Tag tag, uint32_t value) {
    fields_[tag] = {kLong, {value}};
    return *this;
}

TiffBytes& TiffBytes::setRational(Tag tag, uint32_t numerator, uint32_t denominator) {
    fields_[tag] = {kRational, {numerator, denominator}};
    return *this;
}

TiffBytes& TiffBytes::remove(Tag tag) {
    fields_.erase(tag);
    return *this;
}

// The strips stand in the file in reverse order, so that a reader has to go by their offsets.
TiffBytes& TiffBytes::rowsPerStrip(uint32_t rows) {
    setLong(kRowsPerStrip, rows);
    const size_t size = std::max<size_t>(size_t{rows} * fields_[kWidth].values[0], 1);
    Field offsets{kLong, {}};
    Field counts{kLong, {}};
    size_t end = kHeaderSize + pixels_.size();
    for (size_t begin = 0; begin == 0 || begin < pixels_.size(); begin += size) {
        const size_t count = std::min(size, pixels_.size() - begin);
        end -= count;
        offsets.values.push_back(static_cast<uint32_t>(end));
        counts.values.push_back(static_cast<uint32_t>(count));
    }
    fields_[kStripOffsets] = offsets;
    fields_[kStripByteCounts] = counts;
    return *this;
}

std::string TiffBytes::number(uint32_t value, int width) const {
    std::string bytes;
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    if (bigEndian_)
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

std::string TiffBytes::dataOf(const Field& field) const {
    std::string data;
    for (const uint32_t value : field.values)
        data += number(value, field.type == kShort ? 2 : 4);
    return data;
}

std::string TiffBytes::bytes() const {
    const std::string padding(pixels_.size() % 2, '\0');
    const auto directory = static_cast<uint32_t>(kHeaderSize + pixels_.size() + padding.size());
    const auto beyond = static_cast<uint32_t>(directory + 2 + fields_.size() * kEntrySize + 4);
    std::string strips;
    const std::vector<uint32_t>& offsets = fields_.at(kStripOffsets).values;
    const std::vector<uint32_t>& counts = fields_.at(kStripByteCounts).values;
    size_t begin = 0;
    for (size_t i = 0; i < offsets.size() && i < counts.size(); begin += counts[i++])
        strips.insert(0, pixels_, begin, counts[i]);

    std::string file = (bigEndian_ ? "MM" : "II") + number(42, 2) + number(directory, 4) + strips + padding;
    file += number(static_cast<uint32_t>(fields_.size()), 2);
    std::string rest;
    for (const auto& [tag, field] : fields_) {
        std::string data = dataOf(field);
        const size_t count = field.type == kRational ? field.values.size() / 2 : field.values.size();
        file += number(tag, 2) + number(field.type, 2) + number(static_cast<uint32_t>(count), 4);
        if (data.size() > 4) {
            file += number(static_cast<uint32_t>(beyond + rest.size()), 4);
            rest += data;
        } else {
            data.resize(4, '\0');
            file += data;
        }
    }
    return file + number(0, 4) + rest;
}

}  // namespace tifffile
