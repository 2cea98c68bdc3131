#include "simulator/report_writer.h"

#include <gtest/gtest.h>

#include <vector>

namespace simulator {
namespace {

std::vector<uint8_t> first(const Report& report, size_t count) {
    return {report.begin(), report.begin() + static_cast<std::ptrdiff_t>(count)};
}

TEST(ReportWriterTest, HeaderHasFiveLittleEndianWords) {
    const Report report = ReportWriter(0x01020304, -2, 0xA0B0C0D0).u8(7).report();
    const std::vector<uint8_t> expected{4,    3,    2,    1,    0,    0, 0, 0, 0xFE, 0xFF, 0xFF,
                                        0xFF, 0xD0, 0xC0, 0xB0, 0xA0, 1, 0, 0, 0,    7};
    EXPECT_EQ(first(report, 21), expected);
}

TEST(ReportWriterTest, WordsFollowEachOtherWithoutGaps) {
    const Report report = ReportWriter(0, 0, 0).u8(1).u16(0x0302).u32(0x07060504).report();
    const std::vector<uint8_t> body(report.begin() + 20, report.begin() + 28);
    EXPECT_EQ(body, (std::vector<uint8_t>{1, 2, 3, 4, 5, 6, 7, 0}));
    EXPECT_EQ(report[16], 7);
}

TEST(ReportWriterTest, FieldIsFilledWithZerosOrCut) {
    const Report report = ReportWriter(0, 0, 0).field("ab", 4).field("cdefg", 4).u8(0xFF).report();
    const std::vector<uint8_t> body(report.begin() + 20, report.begin() + 29);
    EXPECT_EQ(body, (std::vector<uint8_t>{'a', 'b', 0, 0, 'c', 'd', 'e', 'f', 0xFF}));
}

TEST(ReportWriterTest, TextCountsItsZeroOnlyWhenItHasOne) {
    EXPECT_EQ(ReportWriter(0, 0, 0).text("abc").report()[16], 4);
    EXPECT_EQ(ReportWriter(0, 0, 0).text("abc", false).report()[16], 3);
}

TEST(ReportWriterTest, BodyEndsWithTheRecord) {
    const std::vector<uint8_t> full(kReportBodySize, 0x55);
    const Report exact = ReportWriter(0, 0, 0).bytes(full).report();
    EXPECT_EQ(exact[187], 0x55);
    EXPECT_EQ(exact[16], 168);
    const Report over = ReportWriter(0, 0, 0).bytes(full).u32(0xFFFFFFFF).report();
    EXPECT_EQ(over, exact);
}

TEST(ReportWriterTest, FillingTheRestLeavesBodyAndSizeAlone) {
    const Report report = ReportWriter(0, 0, 0).u8(1).fillRest(9).report();
    EXPECT_EQ(report[20], 1);
    EXPECT_EQ(report[21], 9);
    EXPECT_EQ(report[187], 9);
    EXPECT_EQ(report[16], 1);
}

TEST(ReportWriterTest, StateOfAFinishedReportIsReplaced) {
    Report report = ReportWriter(1, 3, 5).report();
    setState(report, -1);
    EXPECT_EQ(report, ReportWriter(1, -1, 5).report());
}

TEST(ReportWriterTest, WordOfAFinishedBodyIsReplacedWithinTheRecord) {
    Report report = ReportWriter(1, 3, 5).u32(1).u32(2).report();
    setBodyWord(report, 1, 0xA1B2C3D4);
    EXPECT_EQ(report, ReportWriter(1, 3, 5).u32(1).u32(0xA1B2C3D4).report());
    setBodyWord(report, 42, 7);
    EXPECT_EQ(report, ReportWriter(1, 3, 5).u32(1).u32(0xA1B2C3D4).report());
    setBodyWord(report, 41, 0x99000000);
    EXPECT_EQ(report[187], 0x99);
}

TEST(ReportWriterTest, HeaderCanBeReadBack) {
    const Report report = ReportWriter(0xFFFFFFFE, -7, 0x80000001).report();
    EXPECT_EQ(codeOf(report), 0xFFFFFFFEu);
    EXPECT_EQ(stateOf(report), -7);
    EXPECT_EQ(tagOf(report), 0x80000001u);
}

}  // namespace
}  // namespace simulator
