#include "operations/display_setup.h"

#include <cstring>

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/fake_tiff.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace operations {
namespace {

using support::callNames;
using support::FakeHoxi;
using support::fakeHoxi;
using support::fakePlatform;
using support::HoxiCall;
using support::makeReport;
using support::packetsPut;
using support::wordBytes;

using Bytes = std::vector<uint8_t>;
using Names = std::vector<std::string>;

class DisplaySetup : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakeHoxi().dataBufSize = 600;
        startLink();
        scannerlink::state.quiet = 1;
        fakeHoxi().onPutCommand = [this](uint32_t, const Bytes& packet) {
            uint32_t tag = 0;
            std::memcpy(&tag, packet.data() + 4, sizeof tag);
            if (confirms)
                deliver(makeReport(27, 3, tag, {1}));
            if (completes)
                deliverAt(fakePlatform().nowMs + 10, makeReport(133, 3, tag));
            return refusal;
        };
    }

    std::string file(const std::string& bytes) {
        support::writeFile(folder.file("file"), bytes);
        return folder.file("file");
    }

    // A BMP file of this size with 256 colours i x 0x010203, its pixels counting from 0.
    static std::string bitmap(uint32_t width, uint32_t height, uint32_t colorsUsed = 0, size_t pixels = SIZE_MAX) {
        std::string bytes(14, 'h');
        for (const uint32_t word : {40u, width, height, 0u, 0u, 0u, 0u, 0u, colorsUsed, 0u})
            bytes.append(reinterpret_cast<const char*>(&word), 4);
        for (uint32_t color = 0; color < (colorsUsed == 0 ? 256 : colorsUsed); ++color) {
            const uint32_t value = color << 16 | color << 8 | color;
            bytes.append(reinterpret_cast<const char*>(&value), 4);
        }
        for (size_t pixel = 0; pixel < std::min<size_t>(pixels, size_t{width} * height); ++pixel)
            bytes += static_cast<char>(pixel);
        return bytes;
    }

    static Bytes bytesPut() {
        Bytes bytes;
        for (const HoxiCall& call : fakeHoxi().calls)
            if (call.name != "PutCommand")
                bytes.insert(bytes.end(), call.bytes.begin(), call.bytes.end());
        return bytes;
    }

    static Bytes bitmapPacket(uint32_t tag, std::vector<uint32_t> payload) {
        payload.insert(payload.begin(), {62, tag, 16});
        payload.resize(16, 0);
        return wordBytes(payload);
    }

    bool confirms = true;
    bool completes = true;
    uint32_t refusal = 0;
    support::TemporaryFolder folder;
};

TEST_F(DisplaySetup, RemoteMapOfARangeIsSentInOneCall) {
    fakeHoxi().dataBufSize = 100;
    startLink();
    EXPECT_EQ(type("cfgrmm 128"), "");
    EXPECT_EQ(packetsPut().at(0), wordBytes({43, 1, 0}));
    EXPECT_EQ(fakeHoxi().calls.at(1).name, "PutMemory");
    EXPECT_EQ(fakeHoxi().calls.at(1).numbers, (std::vector<uint64_t>{0, 256, 3}));
    EXPECT_EQ(fakeHoxi().calls.at(1).bytes[255], 127);
}

TEST_F(DisplaySetup, RemoteMapOfATextFile) {
    EXPECT_EQ(type("cfgrmm " + file("ascii\n1 0x102 3 ; x\n4")), "");
    Bytes expected(256, 0);
    expected[0] = 1;
    expected[1] = 2;
    expected[2] = 3;
    expected[3] = 4;
    EXPECT_EQ(bytesPut(), expected);
}

TEST_F(DisplaySetup, RemoteMapOfABinaryFileTakes256Bytes) {
    EXPECT_EQ(type("cfgrmm " + file(std::string(300, '\x07'))), "");
    EXPECT_EQ(bytesPut(), Bytes(256, 7));
}

TEST_F(DisplaySetup, MapTextBehindItsLastValueIsIgnored) {
    std::string text = "ASCII\n";
    for (int i = 0; i < 300; ++i)
        text += "9 ";
    type("cfgrmm " + file(text));
    EXPECT_EQ(bytesPut(), Bytes(256, 9));
}

TEST_F(DisplaySetup, MapFileThatGivesNothingIsToldAndTheTableIsPutWithoutItsCommand) {
    const std::string name = file("x");
    EXPECT_EQ(type("cfgrmm " + name), "TamTest: failed reading map tables from " + name + "\n");
    EXPECT_EQ(callNames(), Names{"PutMemory"});
    EXPECT_EQ(type("cfglcm nosuch"), "TamTest: failed reading map tables from nosuch\n");
    EXPECT_EQ(fakeHoxi().calls.back().numbers, (std::vector<uint64_t>{0, 512, 3}));
}

TEST_F(DisplaySetup, RefusedMapCommandPutsNothing) {
    refusal = 9020;
    EXPECT_EQ(type("cfgrmm 256"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(type("cfgrmm " + file("abc")), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(type("cfglcm 0 1 2 3"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(type("cfglcm " + file("abc")), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(callNames(), Names(4, "PutCommand"));
}

TEST_F(DisplaySetup, RefusedPaletteOrBitmapCommandPutsNothing) {
    refusal = 9020;
    support::fakeTiff().files["in.tif"] = support::makeTiff(2, 3);
    for (const std::string& line :
         {std::string("cfglcp 1 2 3 4"), "cfglcp " + file("abcd"), std::string("wlco in.tif 7 8")})
        EXPECT_EQ(type(line), "TamTest: Failure in HoxiPutCommand - 9020\n") << line;
    EXPECT_EQ(type("wlcd " + file(bitmap(2, 1)) + " 0 0"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(callNames(), Names(4, "PutCommand"));
}

TEST_F(DisplaySetup, FailedPutIsToldAndFlagged) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9050; };
    support::fakeTiff().files["in.tif"] = support::makeTiff(2, 3);
    for (const char* line : {"cfgrmm 256", "cfglcm 0 1 2 3", "cfglcp 1 2 3 4", "wlco in.tif 7 8"}) {
        console::state.errorFlag = 0;
        EXPECT_EQ(type(line), "TamTest: failed in HoxiPutMemory\n") << line;
        EXPECT_EQ(console::state.errorFlag, 9050u) << line;
    }
}

TEST_F(DisplaySetup, TableThatIsNotTakenAsAWholeIsTold) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { --call.moved; };
    for (const char* line : {"cfgrmm 256", "cfglcm 0 1 2 3", "cfglcp 1 2 3 4"})
        EXPECT_EQ(type(line), "TamTest: failed in HoxiPutMemory\n") << line;
    EXPECT_EQ(console::state.errorFlag, 9108u);
}

TEST_F(DisplaySetup, LocalMapsAreNormalThenQuality) {
    EXPECT_EQ(type("cfglcm 0 256 128 64"), "");
    EXPECT_EQ(packetsPut().at(0), wordBytes({65, 1, 0}));
    const Bytes sent = bytesPut();
    ASSERT_EQ(sent.size(), 512u);
    EXPECT_EQ(sent[3], 3);
    EXPECT_EQ(sent[256 + 3], 128);
    EXPECT_EQ(sent[256 + 2], 2);
}

TEST_F(DisplaySetup, LocalMapsNeedFourNumbers) {
    for (const char* line : {"cfglcm", "cfglcm 0", "cfglcm 0 1", "cfglcm 0 1 2"})
        EXPECT_EQ(type(line).substr(0, 68), "TamTest: Missing parameter - syntax for ConFiG_LoCal_Map(cfglcm) is:");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 5u);
}

TEST_F(DisplaySetup, LocalMapsOfAFileTake512Bytes) {
    type("cfglcm " + file(std::string(256, '\x01') + std::string(300, '\x02')));
    const std::string expected = std::string(256, '\x01') + std::string(256, '\x02');
    EXPECT_EQ(bytesPut(), Bytes(expected.begin(), expected.end()));
}

TEST_F(DisplaySetup, PaletteEntryIsSentWithoutWaiting) {
    confirms = completes = false;
    EXPECT_EQ(type("cfglcp 1 2 3 4"), "");
    EXPECT_EQ(packetsPut().at(0), wordBytes({64, 1, 4, 1}));
    EXPECT_EQ(bytesPut(), wordBytes({0x01020304}));
    EXPECT_EQ(fakeHoxi().calls.at(1).numbers, (std::vector<uint64_t>{0, 4, 3}));
    EXPECT_EQ(fakePlatform().nowMs, 0u);
}

TEST_F(DisplaySetup, PaletteEntryNeedsFourNumbers) {
    for (const char* line : {"cfglcp", "cfglcp 1", "cfglcp 1 2", "cfglcp 1 2 3"})
        EXPECT_EQ(type(line).substr(0, 69), "TamTest: Missing parameter - syntax for ConFiG_LoCal_Palt(cfglcp) is:");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 5u);
}

TEST_F(DisplaySetup, RemoteMapNeedsARangeOrAFile) {
    EXPECT_EQ(type("cfgrmm").substr(0, 69), "TamTest: Missing parameter - syntax for ConFiG_ReMote_Map(cfgrmm) is:");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(DisplaySetup, PaletteOfABitmapThatIsCutOffIsToldAndNotSent) {
    const std::string whole = "BM" + bitmap(4, 4).substr(2);
    const auto told = [&](size_t size) { return type("cfglcp " + file(whole.substr(0, size))); };
    const std::string name = folder.file("file");
    EXPECT_EQ(told(13), "TamTest: can't read file header from " + name + "\n");
    EXPECT_EQ(told(53), "TamTest: can't read info header from " + name + "\n");
    EXPECT_EQ(told(54 + 1023), "TamTest: can't read color map from " + name + "\n");
    EXPECT_EQ(told(54 + 1024 + 15), "TamTest: can't read image from " + name + "\n");
    EXPECT_EQ(type("cfglcp " + file("BM" + bitmap(0x10000, 0x10000, 0, 0).substr(2))), "TamTest: can't allocate image");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(DisplaySetup, PaletteTextMayBeginInSmallLetters) {
    EXPECT_EQ(type("cfglcp " + file("ascii\n1 2 3 4\n")), "");
    EXPECT_EQ(bytesPut(), wordBytes({0x01020304}));
}

TEST_F(DisplaySetup, PaletteFileThatBeginsLikeABitmapInSmallLettersIsBinary) {
    EXPECT_EQ(type("cfglcp " + file("bMxy")), "");
    EXPECT_EQ(bytesPut(), (Bytes{'b', 'M', 'x', 'y'}));
}

TEST_F(DisplaySetup, PaletteOfABitmapHas128Entries) {
    EXPECT_EQ(type("cfglcp " + file("BM" + bitmap(1, 1).substr(2))), "");
    EXPECT_EQ(packetsPut().at(0), wordBytes({64, 1, 4, 128}));
    const Bytes sent = bytesPut();
    ASSERT_EQ(sent.size(), 512u);
    EXPECT_EQ(Bytes(sent.begin() + 4, sent.begin() + 8), wordBytes({0x01020202}));
    EXPECT_EQ(Bytes(sent.end() - 4, sent.end()), wordBytes({0x7FFFFFFF}));
}

TEST_F(DisplaySetup, PaletteOfATextFileHasAnEntryForEveryFourNumbers) {
    EXPECT_EQ(type("cfglcp " + file("ASCII\n1 2 3 4 ; first\n5 6 7 8\n9 9 9")), "");
    EXPECT_EQ(packetsPut().at(0), wordBytes({64, 1, 4, 2}));
    EXPECT_EQ(bytesPut(), wordBytes({0x01020304, 0x05060708}));
}

TEST_F(DisplaySetup, PaletteTextOf256EntriesIsTakenAndOf257Refused) {
    std::string text = "ASCII\n";
    for (int i = 0; i < 256; ++i)
        text += "1 2 3 4\n";
    EXPECT_EQ(type("cfglcp " + file(text)), "");
    EXPECT_EQ(bytesPut().size(), 1024u);
    fakeHoxi().calls.clear();
    EXPECT_EQ(type("cfglcp " + file(text + "1 2 3 4\n")), "TamTest: couldn't read cfg_lpalt entries\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(DisplaySetup, PaletteOfABinaryFileTakes256EntriesAtMost) {
    EXPECT_EQ(type("cfglcp " + file(std::string(1030, '\x05'))), "");
    EXPECT_EQ(packetsPut().at(0), wordBytes({64, 1, 4, 256}));
    EXPECT_EQ(bytesPut(), Bytes(1024, 5));
}

TEST_F(DisplaySetup, PaletteFileOfThreeBytesIsRefused) {
    EXPECT_EQ(type("cfglcp " + file("abc")), "TamTest: couldn't read cfg_lpalt entries\n");
    EXPECT_EQ(type("cfglcp " + file("ASCII\n1 2 3")), "TamTest: couldn't read cfg_lpalt entries\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(DisplaySetup, PaletteFileThatIsMissingOrEmptyIsToldOnTheConsoleOnly) {
    type("blog " + folder.file("log"));
    EXPECT_EQ(type("cfglcp nosuch"), "TamTest: can't open nosuch\n");
    const std::string empty = file("");
    EXPECT_EQ(type("cfglcp " + empty), "TamTest: can't read file type from " + empty + "\n");
    EXPECT_EQ(support::readFile(folder.file("log")), "");
    type("elog");
}

TEST_F(DisplaySetup, PaletteTravelsInBlocks) {
    type("cfglcp " + file(std::string(1024, '\x05')));
    ASSERT_EQ(callNames(), (Names{"PutCommand", "PutMemory", "PutMemory"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 600, 1}));
    EXPECT_EQ(fakeHoxi().calls[2].numbers, (std::vector<uint64_t>{0, 424, 2}));
}

TEST_F(DisplaySetup, PaletteWithoutConfirmationIsNotSent) {
    confirms = false;
    EXPECT_EQ(type("cfglcp " + file("abcd")), "TamTest: didn't get get_parm confirmation status\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
    EXPECT_GE(fakePlatform().nowMs, 10000u);
    EXPECT_LT(fakePlatform().nowMs, 10100u);
}

TEST_F(DisplaySetup, PaletteThatIsNotCompletedIsTold) {
    completes = false;
    EXPECT_EQ(type("cfglcp " + file("abcd")), "TamTest: didn't get cfg_lcp cmd complete status\n");
    EXPECT_EQ(fakePlatform().nowMs, 10010u);
}

TEST_F(DisplaySetup, FailedPalettePutIsToldAndNotAwaited) {
    completes = false;
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9050; };
    EXPECT_EQ(type("cfglcp " + file("abcd")), "TamTest: failed in HoxiPutMemory\n");
    EXPECT_EQ(console::state.errorFlag, 9050u);
}

TEST_F(DisplaySetup, BitmapIsHalvedAndSentInBlocks) {
    EXPECT_EQ(type("wlcd " + file(bitmap(100, 7)) + " 5 6"), "");
    EXPECT_EQ(packetsPut().at(0), bitmapPacket(1, {5, 6, 100, 7}));
    ASSERT_EQ(callNames(), (Names{"PutCommand", "PutBitmap", "PutBitmap"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 600, 1}));
    EXPECT_EQ(fakeHoxi().calls[2].numbers, (std::vector<uint64_t>{0, 100, 2}));
    const Bytes sent = bytesPut();
    EXPECT_EQ(sent[255], 127);
    EXPECT_EQ(sent[256 + 9], 4);
}

TEST_F(DisplaySetup, BitmapRowsHaveNoPadding) {
    type("wlcd " + file(bitmap(3, 2)) + " 0 0");
    EXPECT_EQ(bytesPut(), (Bytes{0, 0, 1, 1, 2, 2}));
}

TEST_F(DisplaySetup, BitmapNeedsFileAndPosition) {
    for (const char* line : {"wlcd", "wlcd x", "wlcd x 1"})
        EXPECT_EQ(type(line).substr(0, 66), "TamTest: Missing parameter - syntax for Write_LoCal_Disp(wlcd) is:");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 4u);
}

TEST_F(DisplaySetup, BitmapThatIsCutOffIsTold) {
    const std::string whole = bitmap(4, 4);
    const auto told = [&](size_t size) { return type("wlcd " + file(whole.substr(0, size)) + " 0 0"); };
    const std::string name = folder.file("file");
    EXPECT_EQ(told(13), "TamTest: can't read file header from " + name + "\n");
    EXPECT_EQ(told(53), "TamTest: can't read info header from " + name + "\n");
    EXPECT_EQ(told(54 + 1023), "TamTest: can't read color map from " + name + "\n");
    EXPECT_EQ(told(54 + 1024 + 15), "TamTest: can't read image from " + name + "\n");
    EXPECT_EQ(told(54 + 1024 + 16), "");
    EXPECT_EQ(type("wlcd nosuch 0 0"), "TamTest: can't open nosuch\n");
    EXPECT_EQ(type("wlcd " + folder.path().string() + " 0 0"), "TamTest: can't open " + folder.path().string() + "\n");
}

TEST_F(DisplaySetup, BitmapOfFewerColoursHasAShorterMap) {
    EXPECT_EQ(type("wlcd " + file(bitmap(2, 1, 16)) + " 0 0"), "");
    EXPECT_EQ(bytesPut(), (Bytes{0, 0}));
}

TEST_F(DisplaySetup, BitmapOfMoreThan256ColoursIsRefused) {
    EXPECT_EQ(type("wlcd " + file(bitmap(2, 1, 256)) + " 0 0"), "");
    fakeHoxi().calls.clear();
    for (const uint32_t colors : {257u, 0x80000000u, 0xFFFFFFFFu}) {
        std::string bytes = bitmap(2, 1);
        bytes.replace(14 + 32, 4, reinterpret_cast<const char*>(&colors), 4);
        EXPECT_EQ(type("wlcd " + file(bytes) + " 0 0"),
                  "TamTest: can't read color map from " + folder.file("file") + "\n");
    }
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(DisplaySetup, BitmapOfAbsurdSizeIsRefused) {
    for (const auto& [width, height] : std::vector<std::pair<uint32_t, uint32_t>>{
             {0, 1}, {1, 0}, {0xFFFFFFFF, 0xFFFFFFFF}, {4, 0xFFFFFFFC}, {0x10000, 0x10000}}) {
        EXPECT_EQ(type("wlcd " + file(bitmap(width, height, 0, 0)) + " 0 0"), "TamTest: can't allocate image");
    }
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(DisplaySetup, BitmapMessagesStayOutOfTheLog) {
    type("blog " + folder.file("log"));
    type("wlcd nosuch 0 0");
    EXPECT_EQ(support::readFile(folder.file("log")), "");
    type("elog");
}

TEST_F(DisplaySetup, FailedBitmapPutIsTold) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9050; };
    EXPECT_EQ(type("wlcd " + file(bitmap(2, 2)) + " 0 0"), "TamTest: failed in HoxiPutMemory\n");
    EXPECT_EQ(console::state.errorFlag, 9050u);
}

TEST_F(DisplaySetup, OverlayIsSentWithItsRowsReversed) {
    support::fakeTiff().files["in.tif"] = support::makeTiff(2, 3);
    EXPECT_EQ(type("wlco in.tif 7 8"), "");
    EXPECT_EQ(packetsPut().at(0), bitmapPacket(1, {7, 8, 2, 3}));
    EXPECT_EQ(bytesPut(), (Bytes{4, 5, 2, 3, 0, 1}));
    EXPECT_EQ(callNames(), (Names{"PutCommand", "PutBitmap"}));
}

TEST_F(DisplaySetup, OverlayTravelsInBlocks) {
    support::fakeTiff().files["in.tif"] = support::makeTiff(100, 7);
    type("wlco in.tif 7 8");
    ASSERT_EQ(callNames(), (Names{"PutCommand", "PutBitmap", "PutBitmap"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 600, 1}));
    EXPECT_EQ(fakeHoxi().calls[2].numbers, (std::vector<uint64_t>{0, 100, 2}));
}

TEST_F(DisplaySetup, OverlayNeedsFileAndPosition) {
    for (const char* line : {"wlco", "wlco x", "wlco x 1"})
        EXPECT_EQ(type(line).substr(0, 66), "TamTest: Missing parameter - syntax for Write_LoCal_Ovly(wlco) is:");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 4u);
}

TEST_F(DisplaySetup, OverlayFailuresAreTold) {
    EXPECT_EQ(type("wlco none.tif 7 8"), "TamTest: can't open TIFF file none.tif\n");
    support::fakeTiff().files["in.tif"] = support::makeTiff(2, 3);
    support::fakeTiff().readResult = -2;
    EXPECT_EQ(type("wlco in.tif 7 8"), "TamTest: Error reading TIFF file\n");
    support::fakeTiff().readResult = -1;
    EXPECT_EQ(type("wlco in.tif 7 8"), "TamTest: Error opening TIFF file\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 4u);
}

}  // namespace
}  // namespace operations
