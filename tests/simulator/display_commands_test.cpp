// The local display, its palette and maps, and the display area on the host.

#include "hoxi/hoxi_codes.h"
#include "transfer_test.h"

namespace simulator {
namespace {

class DisplayCommandsTest : public TransferTest {
protected:
    static uint8_t pixelAt(uint32_t x, uint32_t y) { return localDisplay(0).pixels()[y * 1024 + x]; }
    static size_t countOf(uint8_t pixel) {
        const LocalDisplay display = localDisplay(0);
        return static_cast<size_t>(std::count(display.pixels().begin(), display.pixels().end(), pixel));
    }
    // The pixels of one line, from x on.
    static Bytes line(uint32_t x, uint32_t y, size_t count) {
        const LocalDisplay display = localDisplay(0);
        const auto first = display.pixels().begin() + y * 1024 + x;
        return {first, first + static_cast<ptrdiff_t>(count)};
    }
    // A command without a transfer: its state.
    std::string stateAfter(uint32_t code, uint32_t tag, std::initializer_list<uint32_t> words) {
        send(code, tag, words);
        return nextBriefs(2);
    }
    // An image of one line as handle 7, scan type 2, image type 3.
    void load(uint32_t tag, uint32_t height, uint32_t width, const Bytes& pixels) {
        send(11, tag, {7, 2, 3, height, width, width, 0, 0, static_cast<uint32_t>(pixels.size())});
        nextBriefs(2);
        uint32_t moved = 0;
        EXPECT_EQ(HoxiPutImage(0, pixels.data(), static_cast<uint32_t>(pixels.size()), &moved, 3), 0u);
    }
};

TEST_F(DisplayCommandsTest, StartsBlackWithGrayPalette) {
    open();
    EXPECT_EQ(countOf(0), 1024u * 768u);
    const LocalDisplay display = localDisplay(0);
    EXPECT_EQ(display.palette()[0], 0u);
    EXPECT_EQ(display.palette()[255], 0xFFFFFFu);
    EXPECT_EQ(display.palette()[16], 0x101010u);
    EXPECT_TRUE(display.isOn());
}

TEST_F(DisplayCommandsTest, ModesAreOffAndOn) {
    open();
    EXPECT_EQ(stateAfter(60, 1, {0}), "133:1:1 133:3:1");
    EXPECT_FALSE(localDisplay(0).isOn());
    EXPECT_EQ(stateAfter(60, 2, {1}), "133:1:2 133:3:2");
    EXPECT_TRUE(localDisplay(0).isOn());
    EXPECT_EQ(stateAfter(60, 3, {2}), "133:1:3 133:6:3");
    EXPECT_EQ(stateAfter(60, 4, {}), "133:1:4 133:6:4");
}

TEST_F(DisplayCommandsTest, FillsAnArea) {
    open();
    EXPECT_EQ(stateAfter(61, 1, {10, 20, 3, 2, 0x105}), "133:1:1 133:3:1");
    EXPECT_EQ(line(9, 20, 5), (Bytes{0, 5, 5, 5, 0}));
    EXPECT_EQ(line(9, 21, 5), (Bytes{0, 5, 5, 5, 0}));
    EXPECT_EQ(countOf(5), 6u);
    EXPECT_EQ(stateAfter(61, 2, {10, 20, 3, 2}), "133:1:2 133:6:2");
}

TEST_F(DisplayCommandsTest, FillIsCutOffAtTheEdges) {
    open();
    stateAfter(61, 1, {1023, 767, 0xFFFFFFFF, 0xFFFFFFFF, 9});
    EXPECT_EQ(pixelAt(1023, 767), 9);
    EXPECT_EQ(countOf(9), 1u);
    EXPECT_EQ(stateAfter(61, 2, {1024, 0, 5, 5, 8}), "133:1:2 133:3:2");
    EXPECT_EQ(stateAfter(61, 3, {0, 768, 5, 5, 8}), "133:1:3 133:3:3");
    EXPECT_EQ(countOf(8), 0u);
}

TEST_F(DisplayCommandsTest, BitmapIsTakenAtOnceWithItsBottomLineFirst) {
    openText("[[scanner]]\nwork_ms = 1000\n");
    std::vector<uint8_t> packet = makePacket(62, 1, wordsOf({100, 50, 3, 2}));
    packet.resize(64);
    uint32_t word = 0;
    EXPECT_EQ(HoxiPutCommand(0, packet.data(), 64, &word), 0u);
    EXPECT_EQ(putBitmap({1, 2, 3}, 1), "0 3");
    EXPECT_EQ(putBitmap({4, 5, 6}, 2), "0 3");
    EXPECT_EQ(line(99, 50, 5), (Bytes{0, 4, 5, 6, 0}));
    EXPECT_EQ(line(99, 51, 5), (Bytes{0, 1, 2, 3, 0}));
    EXPECT_EQ(nextBriefs(3), "133:1:1 28:3:1 133:3:1");
}

TEST_F(DisplayCommandsTest, BitmapIsCutOffAtTheEdges) {
    open();
    send(62, 1, {1022, 767, 3, 2});
    EXPECT_EQ(putBitmap({1, 2, 3, 4, 5, 6}, 3), "0 6");
    EXPECT_EQ(line(1020, 767, 4), (Bytes{0, 0, 4, 5}));
    EXPECT_EQ(countOf(0), 1024u * 768u - 2);
}

TEST_F(DisplayCommandsTest, BitmapsOfImpossibleSizesAreRefused) {
    open();
    EXPECT_EQ(stateAfter(62, 1, {0, 0, 0, 2}), "133:1:1 133:6:1");
    EXPECT_EQ(stateAfter(62, 2, {0, 0, 0xFFFFFFFF, 0xFFFFFFFF}), "133:1:2 133:7:2");
    EXPECT_EQ(stateAfter(62, 3, {0, 0, 1}), "133:1:3 133:6:3");
    EXPECT_EQ(putBitmap({1}, 3), "9005 0");
}

TEST_F(DisplayCommandsTest, BitmapAndMemoryChannelsAreApart) {
    open();
    send(62, 1, {0, 0, 4, 1});
    EXPECT_EQ(putMemory(ramp(4), 3), "9005 0");
    EXPECT_EQ(putBitmap(ramp(4), 3), "0 4");
    EXPECT_EQ(stateOf(1), "133:3:1");
}

TEST_F(DisplayCommandsTest, BitmapCallsCanFail) {
    openText("[[transfer_fault]]\nfunction = 'HoxiPutBitmap'\nresult = 70\nmove = 1\n");
    send(62, 1, {0, 0, 4, 1});
    EXPECT_EQ(putBitmap(ramp(4), 3), "70 1");
}

TEST_F(DisplayCommandsTest, OnePaletteEntryIsTakenAtOnce) {
    openText("[[scanner]]\nwork_ms = 1000\n");
    send(64, 1, {1});
    EXPECT_EQ(putMemory({0x33, 0x22, 0x11, 7}, 3), "0 4");
    EXPECT_EQ(localDisplay(0).palette()[7], 0x112233u);
    EXPECT_EQ(nextBriefs(3), "133:1:1 27:3:1 133:3:1");
}

TEST_F(DisplayCommandsTest, PaletteFilesWaitUntilTheScannerIsReady) {
    open();
    ask(64, 1, {256});
    Bytes entries;
    for (uint32_t i = 0; i < 256; ++i) {
        const Bytes entry = wordsOf({i << 24 | (255 - i)});
        entries.insert(entries.end(), entry.begin(), entry.end());
    }
    EXPECT_EQ(putMemory(entries, 3), "0 1024");
    EXPECT_EQ(next().brief(), "133:3:1");
    EXPECT_EQ(localDisplay(0).palette()[0], 255u);
    EXPECT_EQ(localDisplay(0).palette()[255], 0u);
}

TEST_F(DisplayCommandsTest, PaletteHasOneToTwoHundredFiftySixEntries) {
    open();
    EXPECT_EQ(stateAfter(64, 1, {0}), "133:1:1 133:6:1");
    EXPECT_EQ(stateAfter(64, 2, {257}), "133:1:2 133:6:2");
}

TEST_F(DisplayCommandsTest, MapsAreTakenAtOnceAndNotConfirmed) {
    open();
    send(43, 1);
    EXPECT_EQ(putMemory(ramp(256, 9), 3), "0 256");
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    EXPECT_EQ(remoteDisplay(0).map()[0], 9);
    EXPECT_EQ(remoteDisplay(0).map()[255], 8);
    Bytes maps = ramp(256, 1);
    const Bytes quality = ramp(256, 2);
    maps.insert(maps.end(), quality.begin(), quality.end());
    send(65, 2);
    EXPECT_EQ(putMemory(maps, 3), "0 512");
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:3:2");
    EXPECT_EQ(localDisplay(0).normalMap[10], 11);
    EXPECT_EQ(localDisplay(0).qualityMap[10], 12);
}

TEST_F(DisplayCommandsTest, MapsOfAnotherSizeAreRefused) {
    open();
    send(43, 1);
    EXPECT_EQ(putMemory(ramp(257), 3), "9010 0");
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:6:1");
    EXPECT_EQ(remoteDisplay(0).map(), identityMap());
}

TEST_F(DisplayCommandsTest, ImagesAreShownThroughTheMaps) {
    open();
    Bytes maps = ramp(256, 1);
    maps.resize(512, 77);
    send(65, 1);
    putMemory(maps, 3);
    nextBriefs(2);
    load(2, 1, 3, {10, 20, 30});
    EXPECT_EQ(stateAfter(66, 3, {100, 40, 50, 50}), "133:1:3 133:3:3");
    EXPECT_EQ(stateAfter(19, 4, {7, 2, 3, 1, 0, 0, 255}), "133:1:4 133:3:4");
    EXPECT_EQ(line(99, 40, 5), (Bytes{0, 11, 21, 31, 0}));
    stateAfter(19, 5, {7, 2, 3, 1, 1, 0, 255});
    EXPECT_EQ(line(99, 40, 5), (Bytes{0, 77, 77, 77, 0}));
    stateAfter(19, 6, {7, 2, 3, 1, 0, 0, 30});
    EXPECT_EQ(line(99, 40, 5), (Bytes{0, 86, 171, 0, 0}));
}

TEST_F(DisplayCommandsTest, ImageBeginsAtTheOffset) {
    open();
    load(1, 2, 3, {1, 2, 3, 4, 5, 6});
    stateAfter(66, 2, {0, 10, 3, 6});
    stateAfter(19, 3, {7, 2, 3, 1, 0, 4, 255});
    EXPECT_EQ(countOf(0), 1024u * 768u - 6);
    EXPECT_EQ(line(0, 14, 4), (Bytes{1, 2, 3, 0}));
    EXPECT_EQ(line(0, 15, 4), (Bytes{4, 5, 6, 0}));
    stateAfter(19, 4, {7, 2, 3, 1, 0, 6, 255});
    EXPECT_EQ(countOf(0), 1024u * 768u - 6);
}

TEST_F(DisplayCommandsTest, LargeImagesAreScaledDownEvenly) {
    open();
    load(1, 2, 5, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    stateAfter(66, 2, {0, 0, 3, 5});
    stateAfter(19, 3, {7, 2, 3, 1, 0, 0, 255});
    EXPECT_EQ(line(0, 0, 4), (Bytes{1, 3, 5, 0}));
    EXPECT_EQ(line(0, 1, 4), (Bytes{0, 0, 0, 0}));
}

TEST_F(DisplayCommandsTest, ImagesAreNotShownWhileTheyAreOff) {
    open();
    load(1, 1, 3, {10, 20, 30});
    EXPECT_EQ(stateAfter(63, 2, {0}), "133:1:2 133:3:2");
    EXPECT_EQ(stateAfter(19, 3, {7, 2, 3, 1, 0, 0, 255}), "133:1:3 133:3:3");
    EXPECT_EQ(pixelAt(0, 0), 0);
    stateAfter(63, 4, {1});
    stateAfter(19, 5, {7, 2, 3, 1, 0, 0, 255});
    EXPECT_EQ(pixelAt(0, 0), 10);
    EXPECT_EQ(stateAfter(63, 6, {2}), "133:1:6 133:6:6");
}

TEST_F(DisplayCommandsTest, ImageThatIsNotThereIsNotShown) {
    open();
    EXPECT_EQ(stateAfter(19, 1, {7, 2, 3, 1, 0, 0, 255}), "133:1:1 133:5:1");
    EXPECT_EQ(stateAfter(19, 2, {7, 2, 3, 1, 0, 0}), "133:1:2 133:6:2");
}

TEST_F(DisplayCommandsTest, OverlayColorIsKept) {
    open();
    EXPECT_EQ(stateAfter(67, 1, {255}), "133:1:1 133:3:1");
    EXPECT_EQ(localDisplay(0).overlayColor, 255u);
    EXPECT_EQ(stateAfter(67, 2, {256}), "133:1:2 133:6:2");
}

TEST_F(DisplayCommandsTest, RemoteSettingsAreKept) {
    open();
    EXPECT_EQ(stateAfter(41, 1, {640, 480}), "133:1:1 133:3:1");
    EXPECT_EQ(stateAfter(42, 2, {1}), "133:1:2 133:3:2");
    EXPECT_EQ(stateAfter(44, 3, {32}), "133:1:3 133:3:3");
    const RemoteDisplay remote = remoteDisplay(0);
    EXPECT_EQ(remote.width, 640u);
    EXPECT_EQ(remote.height, 480u);
    EXPECT_TRUE(remote.isOn);
    EXPECT_EQ(remote.bandLines, 32u);
}

TEST_F(DisplayCommandsTest, ResetClearsTheDisplay) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 0\n");
    stateAfter(61, 1, {0, 0, 1, 1, 5});
    send(1, 2);
    nextBriefs(2);
    EXPECT_EQ(pixelAt(0, 0), 0);
}

}  // namespace
}  // namespace simulator
