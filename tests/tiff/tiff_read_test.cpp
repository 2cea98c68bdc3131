#include <filesystem>

#include "tiff/tiff_bytes.h"
#include "tiff/tiff_test.h"

namespace tifffile {
namespace {

TiffBytes image(uint32_t width = 5, uint32_t height = 4) {
    return {width, height, pattern(width, height)};
}

class TiffRead : public TiffTest {};

TEST_F(TiffRead, RecordAndByteCountComeFromTheFile) {
    put(image().setRational(kXResolution, 500, 1).setRational(kYResolution, 1000, 2).set(kResolutionUnit, 2).bytes());
    EXPECT_EQ(readInfo(), 20);
    EXPECT_EQ(info, (TiffFileInfo{8, 5, 4, 500, 500, 1, 0}));
}

TEST_F(TiffRead, PixelsInOneStrip) {
    put(image().bytes());
    EXPECT_EQ(read(), pattern(5, 4));
}

TEST_F(TiffRead, PixelsInStripsOfOneRow) {
    put(image().rowsPerStrip(1).bytes());
    EXPECT_EQ(read(), pattern(5, 4));
}

TEST_F(TiffRead, LastStripIsShorter) {
    put(image().rowsPerStrip(3).bytes());
    EXPECT_EQ(read(), pattern(5, 4));
}

TEST_F(TiffRead, StripTallerThanTheImage) {
    put(image().setLong(kRowsPerStrip, 0xFFFFFFFF).bytes());
    EXPECT_EQ(read(), pattern(5, 4));
}

TEST_F(TiffRead, MostSignificantByteFirst) {
    put(image().rowsPerStrip(2).setRational(kXResolution, 300, 1).bigEndian().bytes());
    EXPECT_EQ(read(), pattern(5, 4));
    EXPECT_EQ(info.h_res, 300);
}

TEST_F(TiffRead, WhiteIsZeroIsInverted) {
    put(image().set(kPhotometric, 0).bytes());
    EXPECT_EQ(read(), inverted(pattern(5, 4)));
}

TEST_F(TiffRead, OnePixel) {
    put(TiffBytes(1, 1, "A").bytes());
    EXPECT_EQ(read(), "A");
}

TEST_F(TiffRead, PackBits) {
    const char packed[] = {5, 1, 2, 3, 4, 5, 6, static_cast<char>(-13), 9};
    put(TiffBytes(5, 4, {packed, sizeof packed}).set(kCompression, 32773).bytes());
    EXPECT_EQ(read(), std::string("\1\2\3\4\5\6") + std::string(14, '\11'));
}

TEST_F(TiffRead, MissingResolutionIsZero) {
    put(image().bytes());
    readInfo();
    EXPECT_EQ(info.h_res, 0);
    EXPECT_EQ(info.v_res, 0);
}

TEST_F(TiffRead, ResolutionWithoutUnitIsInInches) {
    put(image().setRational(kXResolution, 72, 1).setRational(kYResolution, 96, 1).bytes());
    readInfo();
    EXPECT_EQ(info.h_res, 72);
    EXPECT_EQ(info.v_res, 96);
}

TEST_F(TiffRead, ResolutionInCentimetersIsConvertedAndRounded) {
    put(image()
            .setRational(kXResolution, 197, 1)
            .setRational(kYResolution, 39370, 100)
            .set(kResolutionUnit, 3)
            .bytes());
    readInfo();
    EXPECT_EQ(info.h_res, 500);
    EXPECT_EQ(info.v_res, 1000);
}

TEST_F(TiffRead, ResolutionThatIsOnlyARatioIsZero) {
    put(image().setRational(kXResolution, 500, 1).setRational(kYResolution, 500, 1).set(kResolutionUnit, 1).bytes());
    readInfo();
    EXPECT_EQ(info.h_res, 0);
    EXPECT_EQ(info.v_res, 0);
}

TEST_F(TiffRead, ResolutionIsRounded) {
    put(image().setRational(kXResolution, 999, 2).setRational(kYResolution, 4994, 10).bytes());
    readInfo();
    EXPECT_EQ(info.h_res, 500);
    EXPECT_EQ(info.v_res, 499);
}

TEST_F(TiffRead, ResolutionThatIsNoNumberOrTooLargeIsZero) {
    put(image().setRational(kXResolution, 500, 0).setRational(kYResolution, 65536, 1).bytes());
    EXPECT_EQ(readInfo(), 20);
    EXPECT_EQ(info.h_res, 0);
    EXPECT_EQ(info.v_res, 0);
}

TEST_F(TiffRead, LargestResolution) {
    put(image().setRational(kXResolution, 65535, 1).setRational(kYResolution, 1, 1).bytes());
    readInfo();
    EXPECT_EQ(info.h_res, 65535);
    EXPECT_EQ(info.v_res, 1);
}

TEST_F(TiffRead, MissingFileIsRefused) {
    expectRefused();
}

TEST_F(TiffRead, FolderIsRefused) {
    std::filesystem::create_directory(file());
    expectRefused();
}

TEST_F(TiffRead, EmptyFileIsRefused) {
    put("");
    expectRefused();
}

TEST_F(TiffRead, TextIsRefused) {
    put("no image at all, just words that go on for a while\n");
    expectRefused();
}

TEST_F(TiffRead, OtherImageFormatIsRefused) {
    std::string bitmap = "BM";
    bitmap += std::string("\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0", 36);
    put(bitmap + std::string(20, '\0'));
    expectRefused();
}

TEST_F(TiffRead, HeaderAloneIsRefused) {
    put(image().bytes().substr(0, 8));
    expectRefused();
}

TEST_F(TiffRead, CutDirectoryIsRefused) {
    const std::string whole = image().bytes();
    put(whole.substr(0, 40));
    expectRefused();
}

TEST_F(TiffRead, CutPixelsAreAFailedRead) {
    // The directory says that the strip ends behind the end of the file.
    TiffBytes cut = image();
    put(cut.setLong(kStripOffsets, static_cast<uint32_t>(cut.bytes().size() - 19)).bytes());
    EXPECT_EQ(readInfo(), 20);
    EXPECT_EQ(read(), "readTiffFile gave -2");
}

TEST_F(TiffRead, CutCompressedDataIsAFailedRead) {
    const char packed[] = {5, 1, 2, 3, 4, 5, 6, static_cast<char>(-12), 9};
    put(TiffBytes(5, 4, {packed, sizeof packed}).set(kCompression, 32773).bytes());
    EXPECT_EQ(read(), "readTiffFile gave -2");
}

TEST_F(TiffRead, FileTooSmallForItsImageIsRefused) {
    put(image().setLong(kWidth, 40000).setLong(kHeight, 40000).bytes());
    expectRefused();
}

TEST_F(TiffRead, CompressedFileTooSmallForItsImageIsRefused) {
    put(image().setLong(kWidth, 40000).setLong(kHeight, 40000).set(kCompression, 8).bytes());
    expectRefused();
}

TEST_F(TiffRead, SizeBeyondAResultIsRefused) {
    put(image().setLong(kWidth, 65536).setLong(kHeight, 32768).set(kCompression, 5).bytes());
    expectRefused();
}

TEST_F(TiffRead, SizeThatWrapsAroundIsRefused) {
    put(image().setLong(kWidth, 0x80000001).setLong(kHeight, 0x80000001).bytes());
    expectRefused();
}

TEST_F(TiffRead, NoWidthOrNoHeightIsRefused) {
    put(image().setLong(kWidth, 0).bytes());
    expectRefused();
    put(image().setLong(kHeight, 0).bytes());
    expectRefused();
}

TEST_F(TiffRead, MoreStripsThanTheFileSpeaksOfAreRefused) {
    put(image(1, 20).setLong(kHeight, 2000000000).setLong(kRowsPerStrip, 1).set(kCompression, 5).bytes());
    expectRefused();
}

TEST_F(TiffRead, ColorIsRefused) {
    put(image(15, 4).setLong(kWidth, 5).set(kSamples, 3).set(kPhotometric, 2).bytes());
    expectRefused();
}

TEST_F(TiffRead, PaletteIsRefused) {
    put(image().set(kPhotometric, 3).setMany(kColorMap, 768, 0x1234).bytes());
    expectRefused();
}

TEST_F(TiffRead, OneBitIsRefused) {
    put(image().set(kBits, 1).bytes());
    expectRefused();
}

TEST_F(TiffRead, SixteenBitsAreRefused) {
    put(image(10, 4).setLong(kWidth, 5).set(kBits, 16).bytes());
    expectRefused();
}

TEST_F(TiffRead, SecondSampleIsRefused) {
    put(image(10, 4).setLong(kWidth, 5).set(kSamples, 2).set(kExtraSamples, 1).bytes());
    expectRefused();
}

TEST_F(TiffRead, SignedPixelsAreRefused) {
    put(image().set(kSampleFormat, 2).bytes());
    expectRefused();
}

TEST_F(TiffRead, CompressionOfPicturesIsRefused) {
    put(image().set(kCompression, 7).bytes());
    expectRefused();
}

TEST_F(TiffRead, NoArgumentIsTakenOnTrust) {
    put(image().bytes());
    uint8_t pixels[20];
    EXPECT_EQ(getTiffFileInfo(nullptr, &info), -1);
    EXPECT_EQ(getTiffFileInfo(file().c_str(), nullptr), -1);
    EXPECT_EQ(readTiffFile(nullptr, pixels), -1);
    EXPECT_EQ(readTiffFile(file().c_str(), nullptr), -1);
    EXPECT_EQ(getTiffFileInfo("", &info), -1);
}

TEST_F(TiffRead, NoCutOfTheFileDoesHarm) {
    const std::string whole = image(7, 9).rowsPerStrip(2).setRational(kXResolution, 500, 1).bytes();
    for (size_t length = 0; length < whole.size(); ++length) {
        put(whole.substr(0, length));
        const std::string pixels = read();
        EXPECT_TRUE(pixels == pattern(7, 9) || pixels.find("gave -") != std::string::npos) << length;
    }
}

}  // namespace
}  // namespace tifffile
