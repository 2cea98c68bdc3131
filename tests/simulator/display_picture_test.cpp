#include "simulator/display_picture.h"

#include <filesystem>

#include "support/files.h"
#include "transfer_test.h"

namespace simulator {
namespace {

// The pixels lie behind a header of fixed size, the directory of the file among it.
constexpr size_t kHeaderSize = 172;

std::string pixelsOf(const std::string& picture, size_t first, size_t count) {
    return picture.substr(kHeaderSize + 3 * first, 3 * count);
}

TEST(DisplayPicture, BeginsWithTheSizeOfTheDisplay) {
    const std::string picture = displayPicture(LocalDisplay());
    EXPECT_EQ(picture.substr(0, 34), std::string("II\x2A\0\x08\0\0\0\x0C\0"
                                                 "\0\x01\x04\0\x01\0\0\0\0\x04\0\0"
                                                 "\x01\x01\x04\0\x01\0\0\0\0\x03\0\0",
                                                 34));
    EXPECT_EQ(picture.size(), kHeaderSize + 1024 * 768 * 3);
}

TEST(DisplayPicture, HasTheColorsOfThePalette) {
    LocalDisplay display;
    display.setPaletteEntry(5, 0x05112233);
    display.fill({1, 0, 1, 1}, 5);
    EXPECT_EQ(pixelsOf(displayPicture(display), 0, 3), std::string("\0\0\0\x11\x22\x33\0\0\0", 9));
}

TEST(DisplayPicture, IsBlackWhileTheDisplayIsOff) {
    LocalDisplay display;
    display.fill({}, 255);
    display.turn(false);
    EXPECT_EQ(displayPicture(display).substr(kHeaderSize), std::string(1024 * 768 * 3, '\0'));
}

TEST(MapPicture, HasAllGraysAboveWhatTheMapMakesOfThem) {
    GrayMap map{};
    map[0] = 9;
    map[255] = 7;
    const std::string picture = mapPicture(map);
    EXPECT_EQ(picture.size(), kHeaderSize + 256 * 128 * 3);
    for (const size_t line : {0, 63}) {
        EXPECT_EQ(pixelsOf(picture, line * 256, 2), std::string("\0\0\0\1\1\1", 6)) << line;
        EXPECT_EQ(pixelsOf(picture, line * 256 + 255, 1), "\xFF\xFF\xFF") << line;
    }
    for (const size_t line : {64, 127}) {
        EXPECT_EQ(pixelsOf(picture, line * 256, 2), std::string("\x09\x09\x09\0\0\0", 6)) << line;
        EXPECT_EQ(pixelsOf(picture, line * 256 + 255, 1), "\x07\x07\x07") << line;
    }
}

class PictureFileTest : public TransferTest {
protected:
    // Opens a scanner that writes the picture that the key is about.
    void openWriting(const std::string& key) {
        openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 0\n" + key + " = '" + path + "'\n");
    }
    void fillCorner(uint32_t tag, uint32_t pixel) {
        send(61, tag, {0, 0, 1, 1, pixel});
        nextBriefs(2);
    }

    support::TemporaryFolder folder;
    const std::string path = folder.file("picture.tif");
};

TEST_F(PictureFileTest, FollowsTheLocalDisplay) {
    openWriting("display_file");
    fillCorner(1, 5);
    EXPECT_EQ(pixelsOf(support::readFile(path), 0, 2), std::string("\5\5\5\0\0\0", 6));
    send(62, 2, {0, 0, 2, 1});
    putBitmap({8, 9}, 3);
    EXPECT_EQ(pixelsOf(support::readFile(path), 0, 2), "\x08\x08\x08\x09\x09\x09");
}

TEST_F(PictureFileTest, IsBlackAfterAReset) {
    openWriting("display_file");
    fillCorner(1, 5);
    send(1, 2);
    nextBriefs(2);
    EXPECT_EQ(support::readFile(path), displayPicture(LocalDisplay()));
}

TEST_F(PictureFileTest, FollowsTheRemoteMap) {
    openWriting("remote_map_file");
    send(0, 1);
    EXPECT_EQ(support::readFile(path), mapPicture(identityMap()));
    send(43, 2);
    putMemory(ramp(256, 9), 3);
    EXPECT_EQ(support::readFile(path), mapPicture(remoteDisplay(0).map()));
    EXPECT_EQ(remoteDisplay(0).map()[0], 9);
}

TEST_F(PictureFileTest, ThatCannotBeWrittenIsSaid) {
    std::filesystem::create_directory(path);
    openWriting("display_file");
    testing::internal::CaptureStderr();
    fillCorner(1, 5);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "simulated scanner: can't write " + path + "\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

}  // namespace
}  // namespace simulator
