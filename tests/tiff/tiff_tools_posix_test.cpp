// The library against other programs' files: those of libtiff's tools and of ImageMagick.

#include "support/child_process.h"
#include "tiff/tiff_test.h"

namespace tifffile {
namespace {

class TiffTools : public TiffTest {
protected:
    void SetUp() override {
        const TiffFileInfo wanted{8, kColumns, kRows, 500, 1000, 1, 0};
        ASSERT_EQ(writeTiffFile(ours().c_str(), pattern(kColumns, kRows).data(), &wanted), 0);
    }

    static support::RunResult run(const std::string& program, const std::vector<std::string>& arguments) {
        support::RunOptions options;
        options.arguments = arguments;
        return support::runProgram(program, options);
    }

    // Makes the file to read from the file that this library wrote.
    void copyWith(std::vector<std::string> options) {
        options.insert(options.end(), {ours(), file()});
        const support::RunResult result = run(TIFFCP, options);
        ASSERT_EQ(result.exitCode, 0) << result.err;
    }
    void convertWith(const std::vector<std::string>& options) {
        std::vector<std::string> arguments{ours()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(file());
        const support::RunResult result = run(CONVERT, arguments);
        ASSERT_EQ(result.exitCode, 0) << result.err;
    }

    void expectTheImage() {
        EXPECT_TRUE(read() == pattern(kColumns, kRows));
        EXPECT_EQ(info, (TiffFileInfo{8, kColumns, kRows, 500, 1000, 1, 0}));
    }

    std::string ours() const { return folder.file("ours.tif"); }

    static constexpr uint32_t kColumns = 333;
    static constexpr uint32_t kRows = 77;
};

TEST_F(TiffTools, WrittenFileIsDescribedAsItShouldBe) {
    const support::RunResult result = run(TIFFINFO, {ours()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    for (const char* line :
         {"  Image Width: 333 Image Length: 77\n", "  Resolution: 500, 1000 pixels/inch\n", "  Bits/Sample: 8\n",
          "  Compression Scheme: None\n", "  Photometric Interpretation: min-is-black\n", "  Samples/Pixel: 1\n",
          "  Rows/Strip: 77\n", "  Planar Configuration: single image plane\n"})
        EXPECT_NE(result.out.find(line), std::string::npos) << line << "not in\n" << result.out;
}

TEST_F(TiffTools, WrittenPixelsAreThoseThatOthersRead) {
    const support::RunResult result = run(CONVERT, {ours(), "gray:-"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out == pattern(kColumns, kRows));
}

TEST_F(TiffTools, WrittenFileComparesEqualToItsCopy) {
    copyWith({"-c", "zip", "-r", "10"});
    EXPECT_EQ(run(TIFFCMP, {"-t", ours(), file()}).exitCode, 0);
}

TEST_F(TiffTools, Strips) {
    copyWith({"-c", "none", "-r", "10"});
    expectTheImage();
}

TEST_F(TiffTools, Tiles) {
    copyWith({"-c", "none", "-t", "-w", "64", "-l", "32"});
    expectTheImage();
}

TEST_F(TiffTools, TileLargerThanTheImage) {
    copyWith({"-c", "none", "-t", "-w", "512", "-l", "512"});
    expectTheImage();
}

TEST_F(TiffTools, CompressedTiles) {
    copyWith({"-c", "lzw:2", "-t", "-w", "64", "-l", "32"});
    expectTheImage();
}

TEST_F(TiffTools, Lzw) {
    copyWith({"-c", "lzw", "-r", "7"});
    expectTheImage();
}

TEST_F(TiffTools, LzwWithPredictor) {
    copyWith({"-c", "lzw:2"});
    expectTheImage();
}

TEST_F(TiffTools, Deflate) {
    copyWith({"-c", "zip", "-r", "7"});
    expectTheImage();
}

TEST_F(TiffTools, PackBits) {
    copyWith({"-c", "packbits", "-r", "7"});
    expectTheImage();
}

TEST_F(TiffTools, LargeImageInOneCompressedStrip) {
    const TiffFileInfo wanted{8, 4000, 1500, 500, 1000, 1, 0};
    const std::string pixels = pattern(4000, 1500);
    ASSERT_EQ(writeTiffFile(ours().c_str(), pixels.data(), &wanted), 0);
    copyWith({"-c", "zip", "-r", "1500"});
    EXPECT_TRUE(read() == pixels);
}

// Nothing compresses better than an image of one color.
TEST_F(TiffTools, BlankImageIsReadHoweverSmallItsFileIs) {
    const TiffFileInfo wanted{8, 4000, 1500, 500, 1000, 1, 0};
    const std::string pixels(4000 * 1500, '\0');
    ASSERT_EQ(writeTiffFile(ours().c_str(), pixels.data(), &wanted), 0);
    for (const char* compression : {"zip", "lzw", "packbits"}) {
        copyWith({"-c", compression, "-r", "1500"});
        EXPECT_TRUE(read() == pixels) << compression;
    }
}

TEST_F(TiffTools, MostSignificantByteFirst) {
    copyWith({"-c", "lzw", "-B"});
    expectTheImage();
}

TEST_F(TiffTools, LowestBitFirst) {
    copyWith({"-c", "none", "-f", "lsb2msb"});
    expectTheImage();
}

TEST_F(TiffTools, LargeFileFormat) {
    copyWith({"-c", "none", "-8"});
    expectTheImage();
}

TEST_F(TiffTools, SecondImageOfTheFileIsLeftAlone) {
    const std::string second = folder.file("second.tif");
    const TiffFileInfo wanted{8, 1, 1, 1, 1, 1, 0};
    ASSERT_EQ(writeTiffFile(second.c_str(), "A", &wanted), 0);
    ASSERT_EQ(run(TIFFCP, {ours(), second, file()}).exitCode, 0);
    expectTheImage();
}

// The pixels are in the file as they were, under the other sign.
TEST_F(TiffTools, WhiteIsZero) {
    convertWith({"-define", "quantum:polarity=min-is-white", "-compress", "none"});
    EXPECT_NE(run(TIFFINFO, {file()}).out.find("min-is-white"), std::string::npos);
    EXPECT_TRUE(read() == inverted(pattern(kColumns, kRows)));
    EXPECT_TRUE(read() == run(CONVERT, {file(), "gray:-"}).out);
}

TEST_F(TiffTools, Centimeters) {
    convertWith({"-units", "PixelsPerCentimeter", "-density", "197x394"});
    EXPECT_TRUE(read() == pattern(kColumns, kRows));
    EXPECT_EQ(info.h_res, 500);
    EXPECT_EQ(info.v_res, 1001);
}

TEST_F(TiffTools, ColorIsRefused) {
    convertWith({"-type", "TrueColor"});
    expectRefused();
}

TEST_F(TiffTools, PaletteIsRefused) {
    convertWith({"-fill", "red", "-opaque", "black", "-colors", "16", "-type", "Palette"});
    EXPECT_NE(run(TIFFINFO, {file()}).out.find("palette color"), std::string::npos);
    expectRefused();
}

TEST_F(TiffTools, OneBitIsRefused) {
    convertWith({"-monochrome", "-depth", "1", "-compress", "none"});
    EXPECT_NE(run(TIFFINFO, {file()}).out.find("Bits/Sample: 1\n"), std::string::npos);
    expectRefused();
}

TEST_F(TiffTools, FaxIsRefused) {
    convertWith({"-monochrome", "-compress", "group4"});
    expectRefused();
}

TEST_F(TiffTools, SixteenBitsAreRefused) {
    convertWith({"-depth", "16", "-define", "quantum:format=unsigned"});
    EXPECT_NE(run(TIFFINFO, {file()}).out.find("Bits/Sample: 16"), std::string::npos);
    expectRefused();
}

TEST_F(TiffTools, OpacityIsRefused) {
    convertWith({"-alpha", "set", "-channel", "A", "-evaluate", "set", "50%"});
    expectRefused();
}

TEST_F(TiffTools, JpegIsRefused) {
    convertWith({"-compress", "jpeg"});
    expectRefused();
}

TEST_F(TiffTools, NoCutOfACompressedFileDoesHarm) {
    copyWith({"-c", "zip", "-r", "20"});
    const std::string whole = support::readFile(file());
    ::testing::internal::CaptureStderr();
    for (size_t length = 0; length < whole.size(); length += 97) {
        put(whole.substr(0, length));
        EXPECT_NE(read().find("gave -"), std::string::npos) << length;
    }
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace tifffile
