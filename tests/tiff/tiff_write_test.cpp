#include <filesystem>

#include "tiff/tiff_bytes.h"
#include "tiff/tiff_test.h"

namespace tifffile {
namespace {

class TiffWrite : public TiffTest {
protected:
    int32_t write(uint32_t width, uint32_t height, const std::string& pixels, uint16_t hRes = 500, uint16_t vRes = 1000,
                  uint32_t depth = 8) {
        const TiffFileInfo wanted{depth, width, height, hRes, vRes, 1, 0};
        return writeTiffFile(file().c_str(), pixels.data(), &wanted);
    }

    size_t filesInFolder() const {
        const std::filesystem::directory_iterator files(folder.path());
        return static_cast<size_t>(std::distance(begin(files), end(files)));
    }
};

TEST_F(TiffWrite, ReadsBackAsItWas) {
    EXPECT_EQ(write(5, 4, pattern(5, 4)), 0);
    EXPECT_EQ(read(), pattern(5, 4));
    EXPECT_EQ(info, (TiffFileInfo{8, 5, 4, 500, 1000, 1, 0}));
}

TEST_F(TiffWrite, OnePixel) {
    EXPECT_EQ(write(1, 1, "A"), 0);
    EXPECT_EQ(read(), "A");
}

TEST_F(TiffWrite, OddSizes) {
    EXPECT_EQ(write(333, 77, pattern(333, 77)), 0);
    EXPECT_TRUE(read() == pattern(333, 77));
}

TEST_F(TiffWrite, PixelsAreInTheFileAsTheyAre) {
    write(64, 64, pattern(64, 64));
    EXPECT_NE(support::readFile(file()).find(pattern(64, 64)), std::string::npos);
}

TEST_F(TiffWrite, DepthIsNotLookedAt) {
    EXPECT_EQ(write(5, 4, pattern(5, 4), 500, 500, 16), 0);
    EXPECT_EQ(read(), pattern(5, 4));
    EXPECT_EQ(info.depth, 8u);
}

TEST_F(TiffWrite, LargestResolution) {
    write(5, 4, pattern(5, 4), 65535, 1);
    readInfo();
    EXPECT_EQ(info.h_res, 65535);
    EXPECT_EQ(info.v_res, 1);
}

TEST_F(TiffWrite, OlderFileIsReplacedWhole) {
    put(std::string(5000, 'x'));
    EXPECT_EQ(write(5, 4, pattern(5, 4)), 0);
    EXPECT_EQ(read(), pattern(5, 4));
    EXPECT_LT(support::readFile(file()).size(), 5000u);
}

TEST_F(TiffWrite, NothingElseIsLeftInTheFolder) {
    write(5, 4, pattern(5, 4));
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(TiffWrite, MissingFolderIsNotOpened) {
    const TiffFileInfo wanted{8, 1, 1, 1, 1, 1, 0};
    EXPECT_EQ(writeTiffFile(folder.file("missing/image.tif").c_str(), "A", &wanted), -1);
    EXPECT_EQ(filesInFolder(), 0u);
}

TEST_F(TiffWrite, FolderIsNotOpened) {
    std::filesystem::create_directory(file());
    EXPECT_EQ(write(5, 4, pattern(5, 4)), -1);
    EXPECT_EQ(filesInFolder(), 1u);
    EXPECT_TRUE(std::filesystem::is_directory(file()));
}

TEST_F(TiffWrite, ImageWithoutPixelsIsAFailedWriteAndKeepsTheOlderFile) {
    put("older");
    EXPECT_EQ(write(0, 4, ""), -3);
    EXPECT_EQ(write(5, 0, ""), -3);
    EXPECT_EQ(support::readFile(file()), "older");
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(TiffWrite, ImageThatCouldNotBeReadBackIsAFailedWrite) {
    EXPECT_EQ(write(65536, 32768, ""), -3);
    EXPECT_EQ(write(0x80000001, 0x80000001, ""), -3);
    EXPECT_EQ(filesInFolder(), 0u);
}

TEST_F(TiffWrite, NoArgumentIsTakenOnTrust) {
    const TiffFileInfo wanted{8, 1, 1, 1, 1, 1, 0};
    EXPECT_EQ(writeTiffFile(nullptr, "A", &wanted), -1);
    EXPECT_EQ(writeTiffFile(file().c_str(), nullptr, &wanted), -1);
    EXPECT_EQ(writeTiffFile(file().c_str(), "A", nullptr), -1);
    EXPECT_EQ(writeTiffFile("", "A", &wanted), -1);
    EXPECT_EQ(filesInFolder(), 0u);
}

}  // namespace
}  // namespace tifffile
