#include "link/report_display.h"

#include "console/console_state.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::makeReport;
using support::setBytes;

class ReportDisplay : public support::TesterTest {
protected:
    static std::string shown(const Report& report, uint32_t scanner = 0) {
        return printed([&] { displayReport(scanner, report); });
    }

    // What precedes the body of a report without size.
    static std::string header(uint32_t code) {
        return "Mon Nov 16 05:08:38 2026\n  scanner: 0  code: " + std::to_string(code) +
               "  state: 3  tag: 7  size: 0\n";
    }

    static Report wordsReport(uint32_t code, const std::vector<uint32_t>& words) {
        Report report = makeReport(code, 3, 7, words);
        report.size = 0;
        return report;
    }
};

TEST_F(ReportDisplay, HeaderShowsTimeScannerCodeStateTagAndSize) {
    EXPECT_EQ(shown(makeReport(133, -2, 0xFFFFFFFF, {1, 2}), 5),
              "Mon Nov 16 05:08:38 2026\n  scanner: 5  code: 133  state: -2  tag: -1  size: 8\n");
}

TEST_F(ReportDisplay, CodeWithoutBodyShowsTheHeaderOnly) {
    EXPECT_EQ(shown(wordsReport(1, {1, 2, 3})), header(1));
}

TEST_F(ReportDisplay, CodeOf256OrMoreShowsTheHeaderOnly) {
    EXPECT_EQ(shown(wordsReport(256, {1})), header(256));
    EXPECT_EQ(shown(wordsReport(256 + 8, {1})), header(264));
}

TEST_F(ReportDisplay, VersionReportShowsTimeHeaderAndTenAlignedLines) {
    Report report = wordsReport(4, {});
    setBytes(report, 20, std::string("Tamsel\0", 7));
    setBytes(report, 28, "MX1100");
    setBytes(report, 44, "123456789");
    setBytes(report, 60, std::string("\xEA\x07\x0B\x10", 4));
    setBytes(report, 64, "1.23");
    setBytes(report, 76, std::string("\xE9\x07\x01\x1F", 4));
    EXPECT_EQ(shown(report), header(4) +
                                 "    assy_make:    Tamsel\n"
                                 "    assy_model:   MX1100\n"
                                 "    assy_sn:      123456789\n"
                                 "    assy_year:    2026\n"
                                 "    assy_month:   11\n"
                                 "    assy_day:     16\n"
                                 "    soft_version: 1.23\n"
                                 "    soft_year:    2025\n"
                                 "    soft_month:   1\n"
                                 "    soft_day:     31\n");
}

TEST_F(ReportDisplay, VersionTextsWithoutZeroEndWithTheirField) {
    Report report = wordsReport(4, {});
    setBytes(report, 20, std::string(60, 'x'));
    const std::string text = shown(report);
    EXPECT_NE(text.find("    assy_make:    xxxxxxxx\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    assy_model:   xxxxxxxxxxxxxxxx\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    assy_sn:      xxxxxxxxxxxxxxxx\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    soft_version: xxxxxxxxxxxx\n"), std::string::npos) << text;
}

TEST_F(ReportDisplay, ImageVersionTextWithoutZeroEndsWithTheReport) {
    Report report = wordsReport(7, {});
    setBytes(report, 20, std::string(168, 'v'));
    EXPECT_EQ(shown(report), header(7) + "    Image Processing Version:    " + std::string(168, 'v') + "\n");
}

struct BodyCase {
    uint32_t code;
    std::vector<uint32_t> words;
    std::string body;
};

class ReportBody : public ReportDisplay, public ::testing::WithParamInterface<BodyCase> {};

TEST_P(ReportBody, IsShownLineByLine) {
    const BodyCase& body = GetParam();
    EXPECT_EQ(shown(wordsReport(body.code, body.words)), header(body.code) + body.body);
}

const char kTransferBody[] =
    "    xfer_stat: 1\n    xfer_type: 2\n    status: 0xffffffff\n    seq_count: -4\n    byte_count: 5\n";
const char kQualityBody[] =
    "    tag_id: 1\n    handle: 2\n    scan_type: 3\n    total_pixels: 4\n    dirty_pixels: 5\n"
    "    damaged_pixels: 6\n    peak_level: 7\n";
const char kCaptureBody[] = "    tag_id 1\n    handle 2\n    scan_type 3\n    code 4\n";
const std::vector<uint32_t> kTransferWords = {1, 2, 0xFFFFFFFF, 0xFFFFFFFC, 5};
const std::vector<uint32_t> kSeven = {1, 2, 3, 4, 5, 6, 7};

INSTANTIATE_TEST_SUITE_P(
    Codes, ReportBody,
    ::testing::Values(
        BodyCase{8, {0xABC}, "    Mask == 0xabc\n"}, BodyCase{12, {3, 4}, "    buf_id: 3\n    buf_size: 4\n"},
        BodyCase{14, {9}, "    chnl: 9\n"}, BodyCase{15, {0xFFFFFFFF}, "    chnl: -1\n"},
        BodyCase{26,
                 {1, 2, 0x1F, 4, 5, 6, 7, 8},
                 "    xfer_stat: 1\n    xfer_type: 2\n    status: 0x1f\n    handle: 4\n    scan_type: 5\n"
                 "    image_type: 6\n    seq_count: 7\n    byte_count: 8\n"},
        BodyCase{27, kTransferWords, kTransferBody}, BodyCase{28, kTransferWords, kTransferBody},
        BodyCase{30, kSeven, kQualityBody}, BodyCase{31, kSeven, kQualityBody}, BodyCase{32, kSeven, kQualityBody},
        BodyCase{51, {1, 2, 3}, "    tag_id: 1\n    handle: 2\n    scan_type: 3\n"},
        BodyCase{52,
                 {1, 2, 3, 4, 5, 6, 7, 8, 9},
                 "    handle: 1\n    scan_type: 2\n    img_type: 3\n    height: 4\n    width: 5\n    pitch: 6\n"
                 "    depth: 7\n    v_res: 8\n    h_res: 9\n"},
        BodyCase{53,
                 {1, 2, 3, 0x00050004, 0x00070006, 0x00090008, 0x0000FFFF},
                 "    handle: 1\n    scan_type: 2\n    img_type: 3\n    cover_factor: 4\n    roll_time: 5\n"
                 "    contact_area: 6\n    good_area: 7\n    dark_area: 8\n    light_area: 9\n"
                 "    smear_area: 65535\n"},
        BodyCase{83, {1, 2}, " Not Supported\n"},
        BodyCase{106,
                 {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},
                 "    L4 capture status: 11\n    Thumbs capture status: 13\n    R4 capture status: 12\n"
                 "    L4 little finger: 1\n    L4 ring finger: 2\n    L4 middle finger: 3\n"
                 "    L4 index finger: 4\n    Left thumb: 9\n    Right thumb: 10\n    R4 index finger: 5\n"
                 "    R4 middle finger: 6\n    R4 ring finger: 7\n    R4 little finger: 8\n"},
        BodyCase{131, {1, 2, 3, 4}, kCaptureBody}, BodyCase{132, {1, 2, 3, 4}, kCaptureBody},
        BodyCase{135, {0}, "    count: 0\n"},
        BodyCase{135,
                 {2, 0x00030201, 0x1F0C07EA, 0xFFFFFEFD, 0x01020304},
                 "    count: 2\n    [0] id: 1\n    [0] version: 2\n    [0] serno: 3\n    [0] year: 2026\n"
                 "    [0] month: 12\n    [0] day: 31\n    [1] id: 253\n    [1] version: 254\n"
                 "    [1] serno: 65535\n    [1] year: 772\n    [1] month: 2\n    [1] day: 1\n"},
        BodyCase{141, {1, 0}, "    ser_port: 1\n    ser_count: 0\n"},
        BodyCase{141, {0xFFFFFFFF, 3, 0x00FF2A01}, "    ser_port: -1\n    ser_count: 3\n    01 2a ff \n"}));

TEST_F(ReportDisplay, SubassemblyCountBeyondTheBlockIsCutToTwentyEntries) {
    const std::string text = shown(wordsReport(135, {21}));
    EXPECT_NE(text.find("    count: 21\n"), std::string::npos);
    EXPECT_NE(text.find("    [19] day: 0\n"), std::string::npos);
    EXPECT_EQ(text.find("[20]"), std::string::npos) << text;
}

TEST_F(ReportDisplay, NegativeSubassemblyCountShowsNoEntry) {
    EXPECT_EQ(shown(wordsReport(135, {0xFFFFFFFF})), header(135) + "    count: -1\n");
}

TEST_F(ReportDisplay, SerialCountBeyondTheBlockIsCutTo160Bytes) {
    std::string bytes = "    ";
    for (int i = 0; i < 160; ++i)
        bytes += "00 ";
    EXPECT_EQ(shown(wordsReport(141, {0, 161})), header(141) + "    ser_port: 0\n    ser_count: 161\n" + bytes + "\n");
    EXPECT_EQ(shown(wordsReport(141, {0, 0xFFFFFFFF})),
              header(141) + "    ser_port: 0\n    ser_count: -1\n" + bytes + "\n");
}

TEST_F(ReportDisplay, TextMessageHasNoHeaderAndGivesZero) {
    Report report = wordsReport(200, {});
    setBytes(report, 20, "lift finger");
    int result = -1;
    EXPECT_EQ(printed([&] { result = displayReport(0, report); }), "\n  lift finger\n  ");
    EXPECT_EQ(result, 0);
}

TEST_F(ReportDisplay, TextMessageWithoutZeroEndsWithTheReport) {
    Report report = wordsReport(200, {});
    setBytes(report, 20, std::string(168, 't'));
    EXPECT_EQ(shown(report), "\n  " + std::string(168, 't') + "\n  ");
}

TEST_F(ReportDisplay, PerCentSignsOfATextMessageAreNeverDirectives) {
    EXPECT_EQ(messageText("100%% of %d and %s%n, 5%"), "100% of %d and %s%n, 5%");
    EXPECT_EQ(messageText("%%%%%d%%%"), "%%%d%%");
    EXPECT_EQ(messageText(""), "");
}

TEST_F(ReportDisplay, AnyOtherReportGivesOne) {
    int result = -1;
    printed([&] { result = displayReport(0, wordsReport(133, {})); });
    EXPECT_EQ(result, 1);
}

TEST_F(ReportDisplay, QuietShowsNothingAndGivesOne) {
    state.quiet = 1;
    int result = -1;
    EXPECT_EQ(printed([&] { result = displayReport(0, wordsReport(200, {0x41})); }), "");
    EXPECT_EQ(result, 1);
}

}  // namespace
}  // namespace scannerlink
