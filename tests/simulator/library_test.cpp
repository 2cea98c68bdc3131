// The exported functions: what each returns for good and for bad arguments, open and closed.
#include <string>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "simulator/bus.h"
#include "simulator/results.h"
#include "simulator_test.h"

namespace simulator {
namespace {

using LibraryTest = SimulatorTest;

TEST_F(LibraryTest, WithoutAScenarioThereIsOneScanner) {
    EXPECT_EQ(open(), 1u);
}

TEST_F(LibraryTest, OpeningTwiceIsRefusedAndChangesNothing) {
    open();
    uint32_t count = 9;
    EXPECT_EQ(HoxiInitialize(1000, &count), kAlreadyOpen);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 1), 0u);
}

TEST_F(LibraryTest, OpensAgainAfterEachClosing) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(open(), 1u);
        EXPECT_EQ(HoxiTerminate(), 0u);
    }
    EXPECT_EQ(HoxiTerminate(), kNotOpen);
}

TEST_F(LibraryTest, ClosedLibraryAnswersEveryCallWithAnError) {
    uint8_t block[188];
    uint32_t word = 0;
    uint32_t flags = 0;
    uint64_t wide = 0;
    void* pointer = nullptr;
    char text[20];
    EXPECT_EQ(HoxiGetStatus(0, block, 188, &word), hoxi::kResultLibraryClosed);
    EXPECT_EQ(HoxiTerminate(), kNotOpen);
    EXPECT_EQ(HoxiGetBufSize(0, &wide, &wide, &wide), kNotOpen);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 1), kNotOpen);
    EXPECT_EQ(HoxiSetTimeouts(1, 1), kNotOpen);
    EXPECT_EQ(HoxiBreakEnable(1), kNotOpen);
    EXPECT_EQ(HoxiBusReset(), kNotOpen);
    EXPECT_EQ(HoxiGetVersion(text, sizeof text), kNotOpen);
    EXPECT_EQ(HoxiPutMemory(0, block, 1, &word, 3), kNotOpen);
    EXPECT_EQ(HoxiGetMemory(0, block, 1, &word, &flags), kNotOpen);
    EXPECT_EQ(HoxiPutImage(0, block, 1, &word, 3), kNotOpen);
    EXPECT_EQ(HoxiGetImage(0, block, 1, &word, &flags), kNotOpen);
    EXPECT_EQ(HoxiPutBitmap(0, block, 1, &word, 3), kNotOpen);
    EXPECT_EQ(HoxiSetVideoBandParams(0, 0, 30000), kNotOpen);
    EXPECT_EQ(HoxiStartVideo(0, 1, 1, 1, &wide), kNotOpen);
    EXPECT_EQ(HoxiSubmitVideoRequest(0, block, 1), kNotOpen);
    EXPECT_EQ(HoxiGetVideoResult(0, &pointer, &wide), kNotOpen);
    EXPECT_EQ(HoxiGetVideoBandPosition(0, &wide, &pointer, &wide), kNotOpen);
    EXPECT_EQ(HoxiStopVideo(0), kNotOpen);
}

TEST_F(LibraryTest, NullPointersAreRefused) {
    open();
    uint8_t block[188] = {};
    uint32_t word = 0;
    uint32_t flags = 0;
    uint64_t wide = 0;
    void* pointer = nullptr;
    EXPECT_EQ(HoxiInitialize(1000, nullptr), kBadArgument);
    EXPECT_EQ(HoxiGetBufSize(0, nullptr, &wide, &wide), kBadArgument);
    EXPECT_EQ(HoxiGetBufSize(0, &wide, nullptr, &wide), kBadArgument);
    EXPECT_EQ(HoxiGetBufSize(0, &wide, &wide, nullptr), kBadArgument);
    EXPECT_EQ(HoxiPutCommand(0, nullptr, 12, &word), kBadArgument);
    EXPECT_EQ(HoxiPutCommand(0, block, 12, nullptr), kBadArgument);
    EXPECT_EQ(HoxiGetStatus(0, nullptr, 188, &word), kBadArgument);
    EXPECT_EQ(HoxiGetStatus(0, block, 188, nullptr), kBadArgument);
    EXPECT_EQ(HoxiGetVersion(nullptr, 20), kBadArgument);
    EXPECT_EQ(HoxiPutMemory(0, nullptr, 1, &word, 3), kBadArgument);
    EXPECT_EQ(HoxiPutMemory(0, block, 1, nullptr, 3), kBadArgument);
    EXPECT_EQ(HoxiGetMemory(0, nullptr, 1, &word, &flags), kBadArgument);
    EXPECT_EQ(HoxiGetMemory(0, block, 1, nullptr, &flags), kBadArgument);
    EXPECT_EQ(HoxiGetMemory(0, block, 1, &word, nullptr), kBadArgument);
    EXPECT_EQ(HoxiPutImage(0, nullptr, 1, &word, 3), kBadArgument);
    EXPECT_EQ(HoxiGetImage(0, block, 1, &word, nullptr), kBadArgument);
    EXPECT_EQ(HoxiPutBitmap(0, block, 1, nullptr, 3), kBadArgument);
    EXPECT_EQ(HoxiStartVideo(0, 1, 1, 1, nullptr), kBadArgument);
    EXPECT_EQ(HoxiSubmitVideoRequest(0, nullptr, 1), kBadArgument);
    EXPECT_EQ(HoxiGetVideoResult(0, nullptr, &wide), kBadArgument);
    EXPECT_EQ(HoxiGetVideoResult(0, &pointer, nullptr), kBadArgument);
    EXPECT_EQ(HoxiGetVideoBandPosition(0, nullptr, &pointer, &wide), kBadArgument);
    EXPECT_EQ(HoxiGetVideoBandPosition(0, &wide, nullptr, &wide), kBadArgument);
    EXPECT_EQ(HoxiGetVideoBandPosition(0, &wide, &pointer, nullptr), kBadArgument);
}

TEST_F(LibraryTest, IndexBehindTheLastScannerIsRefused) {
    EXPECT_EQ(openText("library.scanners = 2"), 2u);
    uint64_t wide = 0;
    SeenReport report;
    for (const uint32_t index : {2u, 8u, 0xFFFFFFFFu}) {
        EXPECT_EQ(HoxiGetBufSize(index, &wide, &wide, &wide), kNoSuchScanner);
        EXPECT_EQ(put(index, hoxi::CMD_NOP, 1), kNoSuchScanner);
        EXPECT_EQ(fetch(index, report), kNoSuchScanner);
        EXPECT_EQ(HoxiStopVideo(index), kNoSuchScanner);
    }
    EXPECT_EQ(put(1, hoxi::CMD_NOP, 1), 0u);
}

TEST_F(LibraryTest, BufferSizesAreThoseOfTheScanner) {
    openText("[[scanner]]\nfirst_buffer_size = 1\nsecond_buffer_size = 2\ndata_buffer_size = 0x100000000\n");
    uint64_t first = 0;
    uint64_t second = 0;
    uint64_t data = 0;
    EXPECT_EQ(HoxiGetBufSize(0, &first, &second, &data), 0u);
    EXPECT_EQ(first, 1u);
    EXPECT_EQ(second, 2u);
    EXPECT_EQ(data, 0x100000000u);
}

TEST_F(LibraryTest, MalformedPacketsAreRefusedAndNotAnswered) {
    open();
    std::vector<uint8_t> packet = makePacket(hoxi::CMD_SEND_VERS, 1);
    uint32_t word = 0;
    EXPECT_EQ(HoxiPutCommand(0, packet.data(), 0, &word), kBadPacket);
    EXPECT_EQ(HoxiPutCommand(0, packet.data(), 11, &word), kBadPacket);
    packet[8] = 1;
    EXPECT_EQ(HoxiPutCommand(0, packet.data(), 12, &word), kBadPacket);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 2), 0u);
    EXPECT_EQ(next().brief(), "1:3:2");
}

TEST_F(LibraryTest, VersionIsCutToTheBufferAndAlwaysEnds) {
    openText("library.version = '1.2.3.4'");
    char text[9] = "########";
    EXPECT_EQ(HoxiGetVersion(text, 8), 0u);
    EXPECT_EQ(std::string(text, 9), std::string("1.2.3.4\0\0", 9));
    EXPECT_EQ(HoxiGetVersion(text, 7), 0u);
    EXPECT_STREQ(text, "1.2.3.");
    EXPECT_EQ(HoxiGetVersion(text, 1), 0u);
    EXPECT_STREQ(text, "");
    text[0] = '#';
    EXPECT_EQ(HoxiGetVersion(text, 0), kBadArgument);
    EXPECT_EQ(text[0], '#');
}

TEST_F(LibraryTest, SettingsAreRemembered) {
    open();
    EXPECT_EQ(HoxiSetTimeouts(5, 0xFFFFFFFF), 0u);
    EXPECT_EQ(HoxiBreakEnable(5), 0u);
    EXPECT_EQ(bus().putTimeoutMs, 5u);
    EXPECT_EQ(bus().getTimeoutMs, 0xFFFFFFFFu);
    EXPECT_TRUE(bus().breakEnabled);
    EXPECT_EQ(HoxiBreakEnable(0), 0u);
    EXPECT_FALSE(bus().breakEnabled);
}

TEST_F(LibraryTest, ReportsSurviveABusReset) {
    open();
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 1), 0u);
    EXPECT_EQ(HoxiBusReset(), 0u);
    EXPECT_EQ(next().brief(), "1:3:1");
}

TEST_F(LibraryTest, FetchFillsNoMoreThanTheBlock) {
    open();
    put(0, hoxi::CMD_NOP, 0x01020304);
    uint8_t block[16] = {};
    uint32_t length = 0;
    EXPECT_EQ(HoxiGetStatus(0, block, 14, &length), 0u);
    EXPECT_EQ(length, 14u);
    EXPECT_EQ(block[0], 1);
    EXPECT_EQ(block[13], 3);
    EXPECT_EQ(block[14], 0);
}

TEST_F(LibraryTest, FetchFillsTheWholeReportWithZerosBehindTheBody) {
    open();
    put(0, hoxi::CMD_NOP, 7);
    std::vector<uint8_t> block(200, 0xEE);
    uint32_t length = 0;
    EXPECT_EQ(HoxiGetStatus(0, block.data(), 200, &length), 0u);
    EXPECT_EQ(length, 188u);
    EXPECT_EQ(block[187], 0);
    EXPECT_EQ(block[188], 0xEE);
}

TEST_F(LibraryTest, ChannelsHaveNothingToTransfer) {
    open();
    uint8_t block[4] = {};
    uint32_t moved = 9;
    uint32_t flags = 9;
    uint64_t wide = 0;
    void* pointer = nullptr;
    EXPECT_EQ(HoxiPutMemory(0, block, 4, &moved, 3), kNothingToTransfer);
    EXPECT_EQ(moved, 0u);
    EXPECT_EQ(HoxiGetMemory(0, block, 4, &moved, &flags), kNothingToTransfer);
    EXPECT_EQ(flags, 0u);
    EXPECT_EQ(HoxiPutImage(0, block, 4, &moved, 3), kNothingToTransfer);
    EXPECT_EQ(HoxiGetImage(0, block, 4, &moved, &flags), kNothingToTransfer);
    EXPECT_EQ(HoxiPutBitmap(0, block, 4, &moved, 3), kNothingToTransfer);
    EXPECT_EQ(HoxiSetVideoBandParams(0, 0, 250), kNothingToTransfer);
    EXPECT_EQ(HoxiStartVideo(0, 1, 1, 1, &wide), kNothingToTransfer);
    EXPECT_EQ(HoxiSubmitVideoRequest(0, block, 1), kNothingToTransfer);
    EXPECT_EQ(HoxiGetVideoResult(0, &pointer, &wide), kNothingToTransfer);
    EXPECT_EQ(HoxiGetVideoBandPosition(0, &wide, &pointer, &wide), kNothingToTransfer);
    EXPECT_EQ(HoxiStopVideo(0), kNothingToTransfer);
}

TEST_F(LibraryTest, EveryFunctionOfAScannerCanBeMadeToFail) {
    std::string toml;
    const char* const names[] = {"HoxiGetBufSize",
                                 "HoxiPutCommand",
                                 "HoxiGetStatus",
                                 "HoxiPutMemory",
                                 "HoxiGetMemory",
                                 "HoxiPutImage",
                                 "HoxiGetImage",
                                 "HoxiPutBitmap",
                                 "HoxiSetVideoBandParams",
                                 "HoxiStartVideo",
                                 "HoxiSubmitVideoRequest",
                                 "HoxiGetVideoResult",
                                 "HoxiGetVideoBandPosition",
                                 "HoxiStopVideo"};
    uint32_t result = 101;
    for (const char* const name : names) {
        toml += "[[call_fault]]\nfunction = '" + std::string(name) + "'\nresult = " + std::to_string(result++) + "\n";
    }
    openText(toml);
    uint8_t block[4] = {};
    uint32_t word = 0;
    uint64_t wide = 0;
    void* pointer = nullptr;
    EXPECT_EQ(HoxiGetBufSize(0, &wide, &wide, &wide), 101u);
    EXPECT_EQ(put(0, 0, 1), 102u);
    EXPECT_EQ(failedFetch(), 103u);
    EXPECT_EQ(HoxiPutMemory(0, block, 4, &word, 3), 104u);
    EXPECT_EQ(HoxiGetMemory(0, block, 4, &word, &word), 105u);
    EXPECT_EQ(HoxiPutImage(0, block, 4, &word, 3), 106u);
    EXPECT_EQ(HoxiGetImage(0, block, 4, &word, &word), 107u);
    EXPECT_EQ(HoxiPutBitmap(0, block, 4, &word, 3), 108u);
    EXPECT_EQ(HoxiSetVideoBandParams(0, 0, 250), 109u);
    EXPECT_EQ(HoxiStartVideo(0, 1, 1, 1, &wide), 110u);
    EXPECT_EQ(HoxiSubmitVideoRequest(0, block, 1), 111u);
    EXPECT_EQ(HoxiGetVideoResult(0, &pointer, &wide), 112u);
    EXPECT_EQ(HoxiGetVideoBandPosition(0, &wide, &pointer, &wide), 113u);
    EXPECT_EQ(HoxiStopVideo(0), 114u);
}

}  // namespace
}  // namespace simulator
