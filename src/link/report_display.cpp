#include "link/report_display.h"

#include <algorithm>
#include <cinttypes>

#include "console/date_text.h"
#include "console/output.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "link/report_layouts.h"

namespace scannerlink {
namespace {

using console::consolePrint;
using console::output;

void showHeader(uint32_t scanner, const Report& report) {
    output("%s\n", console::dateText().c_str());
    output("  scanner: %" PRId32 "  code: %" PRId32 "  state: %" PRId32 "  tag: %" PRId32 "  size: %" PRId32 "\n",
           static_cast<int32_t>(scanner), static_cast<int32_t>(report.code), report.state,
           static_cast<int32_t>(report.tag), static_cast<int32_t>(report.size));
}

int32_t fieldNumber(const Report& report, const FieldLine& line) {
    switch (line.kind) {
        case FieldKind::unsigned16:
            return reportField<uint16_t>(report, line.offset);
        case FieldKind::unsigned8:
            return reportField<uint8_t>(report, line.offset);
        default:
            return reportField<int32_t>(report, line.offset);
    }
}

void showFields(const Report& report) {
    for (const FieldLine& line : fieldLines(report.code)) {
        if (line.kind == FieldKind::text)
            output(line.format, reportText(report, line.offset, line.size).c_str());
        else
            output(line.format, fieldNumber(report, line));
    }
}

// How many entries of a list the report really holds, whatever its count says.
int32_t entriesHeld(int64_t count, size_t offset, size_t entrySize) {
    const auto most = static_cast<int64_t>((kReportSize - offset) / entrySize);
    return static_cast<int32_t>(std::clamp<int64_t>(count, 0, most));
}

void showSubassemblies(const Report& report) {
    const int32_t count = entriesHeld(reportField<int32_t>(report, kBodyOffset), kListOffset, kListEntrySize);
    for (int32_t i = 0; i < count; ++i) {
        const size_t entry = kListOffset + i * kListEntrySize;
        output("    [%d] id: %d\n", i, reportField<uint8_t>(report, entry));
        output("    [%d] version: %d\n", i, reportField<uint8_t>(report, entry + 1));
        output("    [%d] serno: %d\n", i, reportField<uint16_t>(report, entry + 2));
        output("    [%d] year: %d\n", i, reportField<uint16_t>(report, entry + 4));
        output("    [%d] month: %d\n", i, reportField<uint8_t>(report, entry + 6));
        output("    [%d] day: %d\n", i, reportField<uint8_t>(report, entry + 7));
    }
}

void showSerialData(const Report& report) {
    const auto stated = reportField<uint32_t>(report, kBodyOffset + 4);
    if (stated == 0)
        return;
    const int32_t count = entriesHeld(stated, kSerialDataOffset, 1);
    output("    ");
    for (int32_t i = 0; i < count; ++i)
        output("%02x ", reportField<uint8_t>(report, kSerialDataOffset + i));
    output("\n");
}

}  // namespace

int displayReport(uint32_t scanner, const Report& report) {
    if (state.quiet != 0)
        return 1;
    if (report.code == hoxi::STA_TEXT) {
        const std::string text = messageText(reportText(report, kBodyOffset, kReportSize - kBodyOffset));
        consolePrint("\n  %s\n  ", text.c_str());
        return 0;
    }
    showHeader(scanner, report);
    showFields(report);
    if (report.code == hoxi::STA_NOT_SUPPORTED)
        output(" Not Supported\n");
    if (report.code == hoxi::STA_SUBASSEMBLIES)
        showSubassemblies(report);
    if (report.code == hoxi::STA_SERIAL_DATA)
        showSerialData(report);
    return 1;
}

std::string messageText(std::string_view text) {
    std::string shown;
    for (size_t i = 0; i < text.size(); ++i) {
        shown += text[i];
        if (text.substr(i, 2) == "%%")
            ++i;
    }
    return shown;
}

}  // namespace scannerlink
