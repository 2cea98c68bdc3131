// What is shown of each status report: for every code the lines of its body, in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace scannerlink {

enum class FieldKind : uint8_t { signed32, unsigned16, unsigned8, text };

// One line: its format, and the field that goes into it. Offsets count from the start of the report.
struct FieldLine {
    const char* format;
    size_t offset;
    FieldKind kind = FieldKind::signed32;
    size_t size = 0;  // of a text field, bytes
};

// The lines for the code, none for a code that is shown by its header alone or in a way of its own.
std::span<const FieldLine> fieldLines(uint32_t code);

// Reports that list something: where the list begins and how wide an entry is.
inline constexpr size_t kListOffset = 24;  // sub-assemblies
inline constexpr size_t kListEntrySize = 8;
inline constexpr size_t kSerialDataOffset = 28;

}  // namespace scannerlink
