// Status reports: one 188-byte little-endian record each, written front to back within its bounds.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace simulator {

inline constexpr size_t kReportSize = 188;
inline constexpr size_t kReportHeaderSize = 20;
inline constexpr size_t kReportBodySize = kReportSize - kReportHeaderSize;

using Report = std::array<uint8_t, kReportSize>;

// The header's size field follows the body unless stated otherwise. What does not fit any more is left out; it never
// runs over the record. Pure.
class ReportWriter {
public:
    ReportWriter(uint32_t code, int32_t state, uint32_t tag);

    ReportWriter& u8(uint8_t value);
    ReportWriter& u16(uint16_t value);
    ReportWriter& u32(uint32_t value);
    ReportWriter& bytes(std::span<const uint8_t> values);
    // A text in a field of a fixed width, filled up with zeros. A text as long as the field has no zero of its own.
    ReportWriter& field(std::string_view text, size_t width);
    // The text and, when asked for, its terminating zero.
    ReportWriter& text(std::string_view text, bool terminated = true);
    // Fills the rest of the body without counting it in the size field.
    ReportWriter& fillRest(uint8_t value);
    // States another size than the body's.
    ReportWriter& statedSize(uint32_t size);

    const Report& report() const { return report_; }

private:
    void append(uint8_t value);

    Report report_{};
    size_t end_ = kReportHeaderSize;
};

// Puts another state into a finished report.
void setState(Report& report, int32_t state);
// Puts another value into a word of a finished report's body, counted from 0; does nothing beyond its end.
void setBodyWord(Report& report, size_t word, uint32_t value);
uint32_t codeOf(const Report& report);
int32_t stateOf(const Report& report);
uint32_t tagOf(const Report& report);

}  // namespace simulator
