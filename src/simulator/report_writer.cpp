#include "simulator/report_writer.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr size_t kCodeAt = 0;
constexpr size_t kStateAt = 8;
constexpr size_t kTagAt = 12;
constexpr size_t kSizeAt = 16;

void writeWord(Report& report, size_t offset, uint32_t value) {
    for (size_t i = 0; i < 4; ++i) {
        report[offset + i] = static_cast<uint8_t>(value >> (8 * i));
    }
}

uint32_t readWord(const Report& report, size_t offset) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) {
        value |= static_cast<uint32_t>(report[offset + i]) << (8 * i);
    }
    return value;
}

}  // namespace

ReportWriter::ReportWriter(uint32_t code, int32_t state, uint32_t tag) {
    writeWord(report_, kCodeAt, code);
    writeWord(report_, kStateAt, static_cast<uint32_t>(state));
    writeWord(report_, kTagAt, tag);
}

ReportWriter& ReportWriter::u8(uint8_t value) {
    append(value);
    return statedSize(static_cast<uint32_t>(end_ - kReportHeaderSize));
}

ReportWriter& ReportWriter::u16(uint16_t value) {
    return u8(static_cast<uint8_t>(value)).u8(static_cast<uint8_t>(value >> 8));
}

ReportWriter& ReportWriter::u32(uint32_t value) {
    return u16(static_cast<uint16_t>(value)).u16(static_cast<uint16_t>(value >> 16));
}

ReportWriter& ReportWriter::bytes(std::span<const uint8_t> values) {
    for (const uint8_t value : values) {
        u8(value);
    }
    return *this;
}

ReportWriter& ReportWriter::field(std::string_view text, size_t width) {
    for (size_t i = 0; i < width; ++i) {
        u8(i < text.size() ? static_cast<uint8_t>(text[i]) : 0);
    }
    return *this;
}

ReportWriter& ReportWriter::text(std::string_view text, bool terminated) {
    return field(text, text.size() + (terminated ? 1 : 0));
}

ReportWriter& ReportWriter::fillRest(uint8_t value) {
    std::fill(report_.begin() + static_cast<std::ptrdiff_t>(end_), report_.end(), value);
    return *this;
}

ReportWriter& ReportWriter::statedSize(uint32_t size) {
    writeWord(report_, kSizeAt, size);
    return *this;
}

void ReportWriter::append(uint8_t value) {
    if (end_ < report_.size()) {
        report_[end_++] = value;
    }
}

void setState(Report& report, int32_t state) {
    writeWord(report, kStateAt, static_cast<uint32_t>(state));
}

void setBodyWord(Report& report, size_t word, uint32_t value) {
    if (word < kReportBodySize / 4) {
        writeWord(report, kReportHeaderSize + 4 * word, value);
    }
}

uint32_t codeOf(const Report& report) {
    return readWord(report, kCodeAt);
}

int32_t stateOf(const Report& report) {
    return static_cast<int32_t>(readWord(report, kStateAt));
}

uint32_t tagOf(const Report& report) {
    return readWord(report, kTagAt);
}

}  // namespace simulator
