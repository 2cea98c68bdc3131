// The status report: the scanner's asynchronous answer, as HoxiGetStatus fills it. Offsets and widths are those of
// the scanners' interface tables; little-endian, offsets count from the start of the report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace scannerlink {

inline constexpr size_t kReportSize = 188;
inline constexpr size_t kBodyOffset = 20;
inline constexpr uint32_t kReportCodes = 256;  // codes below this have a slot

struct Report {
    uint32_t code;
    uint32_t unused;
    int32_t state;
    uint32_t tag;
    uint32_t size;  // bytes of the body, as the scanner says
    uint8_t body[kReportSize - kBodyOffset];
};
static_assert(sizeof(Report) == kReportSize);
static_assert(offsetof(Report, state) == 8);
static_assert(offsetof(Report, tag) == 12);
static_assert(offsetof(Report, body) == kBodyOffset);

// Where the fields that operations read begin.
inline constexpr size_t kModelOffset = 28;  // version report: text of 16 bytes
inline constexpr size_t kModelSize = 16;
inline constexpr size_t kConfirmationOffset = kBodyOffset;  // transfer reports: what is confirmed
inline constexpr size_t kProgressOffset = 32;               // capture reports: the progress code

// A number of the report; the offset is a constant of the layout that leaves it inside.
template <typename Number>
Number reportField(const Report& report, size_t offset) {
    Number number{};
    if (offset + sizeof number <= kReportSize)
        std::memcpy(&number, reinterpret_cast<const char*>(&report) + offset, sizeof number);
    return number;
}

// The text of a field of size bytes, up to its zero or, when the scanner sent none, the field's end.
std::string reportText(const Report& report, size_t offset, size_t size);

}  // namespace scannerlink
