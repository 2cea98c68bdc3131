// Images between program and scanner: announcing, moving, freeing, and the references of the cameras.
#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "simulator/results.h"
#include "simulator_test.h"

namespace simulator {
namespace {

class ImageCommandsTest : public SimulatorTest {
protected:
    static std::vector<uint8_t> ramp(uint32_t size) {
        std::vector<uint8_t> pixels(size);
        std::iota(pixels.begin(), pixels.end(), uint8_t{3});
        return pixels;
    }
    std::string stateOf(uint32_t tag) { return untilComplete(tag).back().brief(); }
    // Loads a ramp of one line as the image with this handle, scan type 2 and image type 3.
    void load(uint32_t tag, uint32_t handle, uint32_t size) {
        send(11, tag, {handle, 2, 3, 1, size, size, 0, 0, size});
        EXPECT_EQ(nextBriefs(2), "133:1:" + std::to_string(tag) + " 133:3:" + std::to_string(tag));
        EXPECT_EQ(putBlock(ramp(size), 3, size), 0u);
    }
    HoxiResult putBlock(const std::vector<uint8_t>& block, uint32_t flags, uint32_t expected) {
        uint32_t moved = 77;
        const HoxiResult result = HoxiPutImage(0, block.data(), static_cast<uint32_t>(block.size()), &moved, flags);
        EXPECT_EQ(moved, expected);
        return result;
    }
    // One call in short: "result moved flags first-byte".
    std::string getBlock(uint32_t size) {
        std::vector<uint8_t> block(size, 0xEE);
        uint32_t moved = 77;
        uint32_t flags = 77;
        const HoxiResult result = HoxiGetImage(0, block.data(), size, &moved, &flags);
        return std::to_string(result) + " " + std::to_string(moved) + " " + std::to_string(flags) + " " +
               std::to_string(block[0]);
    }
    // Asks for the loaded image, up to its being ready.
    void ask(uint32_t tag, uint32_t handle, uint32_t size) {
        send(10, tag, {handle, 2, 3, size});
        const std::string end = ":" + std::to_string(tag);
        EXPECT_EQ(nextBriefs(3), "133:1" + end + " 133:3" + end + " 26:3" + end);
    }
};

TEST_F(ImageCommandsTest, TransferIsReportedReadyAndDone) {
    open();
    load(1, 7, 10);
    send(10, 2, {7, 2, 3, 10});
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:3:2");
    const SeenReport ready = next();
    EXPECT_EQ(ready.brief(), "26:3:2");
    EXPECT_EQ(ready.size, 32u);
    EXPECT_EQ(ready.words(8), "1 1 0 7 2 3 0 0");
    EXPECT_EQ(getBlock(6), "0 6 1 3");
    EXPECT_EQ(getBlock(6), "0 4 2 9");
    const SeenReport done = next();
    EXPECT_EQ(done.brief(), "26:3:2");
    EXPECT_EQ(done.words(8), "5 1 0 7 2 3 2 10");
    EXPECT_EQ(next().brief(), "133:3:2");
    EXPECT_EQ(getBlock(6), "9005 0 0 238");
}

TEST_F(ImageCommandsTest, OneBlockIsFirstAndLast) {
    open();
    load(1, 7, 10);
    ask(2, 7, 10);
    EXPECT_EQ(getBlock(11), "0 10 3 3");
}

TEST_F(ImageCommandsTest, BlocksAreNoLargerThanTheDataBuffer) {
    openText("[[scanner]]\ndata_buffer_size = 4\n");
    send(11, 1, {7, 2, 3, 1, 10, 10, 0, 0, 10});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    const std::vector<uint8_t> all = ramp(10);
    EXPECT_EQ(putBlock(all, 3, 4), 0u);
    EXPECT_EQ(putBlock({all.begin() + 4, all.begin() + 8}, 0, 4), 0u);
    EXPECT_EQ(putBlock({all.begin() + 8, all.end()}, 2, 2), 0u);
    ask(2, 7, 10);
    EXPECT_EQ(getBlock(10), "0 4 1 3");
    EXPECT_EQ(getBlock(10), "0 4 0 7");
    EXPECT_EQ(getBlock(10), "0 2 2 11");
}

TEST_F(ImageCommandsTest, LoadedImageIsDescribedAndComesBackByteForByte) {
    open();
    send(11, 1, {7, 2, 3, 4, 5, 6, 300, 400, 24});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    EXPECT_EQ(putBlock(ramp(24), 3, 24), 0u);
    send(83, 2, {7, 2, 3});
    EXPECT_EQ(next().brief(), "133:1:2");
    const SeenReport info = next();
    EXPECT_EQ(info.brief(), "52:3:2");
    EXPECT_EQ(info.size, 36u);
    EXPECT_EQ(info.words(9), "7 2 3 4 5 6 8 300 400");
    next();
    EXPECT_EQ(fetchImage(3, 7, 2, 3, 24), ramp(24));
}

TEST_F(ImageCommandsTest, LongPacketsFilledUpWithZerosAreTaken) {
    open();
    std::vector<uint8_t> packet = makePacket(11, 1, wordsOf({7, 2, 3, 1, 10, 10, 0, 0, 10}));
    packet.resize(64);
    uint32_t word = 0;
    EXPECT_EQ(HoxiPutCommand(0, packet.data(), 64, &word), 0u);
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    EXPECT_EQ(putBlock(ramp(10), 3, 10), 0u);
}

TEST_F(ImageCommandsTest, NothingMovesBeforeTheCommandIsComplete) {
    openText("[[scanner]]\nwork_ms = 3600000\n");
    send(11, 1, {7, 2, 3, 1, 10, 10, 0, 0, 10});
    EXPECT_EQ(next().brief(), "133:1:1");
    EXPECT_EQ(putBlock(ramp(10), 3, 0), kNothingToTransfer);
    EXPECT_EQ(getBlock(10), "9005 0 0 238");
}

TEST_F(ImageCommandsTest, TransferGoesOneWayOnly) {
    open();
    load(1, 7, 10);
    EXPECT_EQ(putBlock(ramp(10), 3, 0), kNothingToTransfer);
    ask(2, 7, 10);
    EXPECT_EQ(putBlock(ramp(10), 3, 0), kNothingToTransfer);
    EXPECT_EQ(getBlock(10), "0 10 3 3");
    send(11, 3, {8, 2, 3, 1, 10, 10, 0, 0, 10});
    EXPECT_EQ(nextBriefs(4), "26:3:2 133:3:2 133:1:3 133:3:3");
    EXPECT_EQ(getBlock(10), "9005 0 0 238");
    EXPECT_EQ(putBlock(ramp(10), 3, 10), 0u);
}

TEST_F(ImageCommandsTest, ANewTransferTakesThePlaceOfTheOld) {
    open();
    load(1, 7, 10);
    ask(2, 7, 10);
    EXPECT_EQ(getBlock(4), "0 4 1 3");
    ask(3, 7, 10);
    EXPECT_EQ(getBlock(10), "0 10 3 3");
    EXPECT_EQ(nextBriefs(2), "26:3:3 133:3:3");
}

TEST_F(ImageCommandsTest, SendIsRefusedForWhatIsNotThereAndForAnotherByteCount) {
    open();
    load(1, 7, 10);
    send(10, 2, {7, 2, 4, 10});
    EXPECT_EQ(stateOf(2), "133:5:2");
    for (const uint32_t byteCount : {0u, 9u, 11u}) {
        send(10, 3, {7, 2, 3, byteCount});
        EXPECT_EQ(stateOf(3), "133:6:3");
    }
    send(10, 4, {7, 2, 3});
    EXPECT_EQ(stateOf(4), "133:6:4");
    EXPECT_EQ(getBlock(10), "9005 0 0 238");
}

TEST_F(ImageCommandsTest, ReceiveIsRefusedForSizesThatCannotBe) {
    openText("[[scanner]]\nimage_memory = 100\n");
    const auto state = [&](uint32_t height, uint32_t width, uint32_t pitch, uint32_t byteCount) {
        send(11, 1, {7, 2, 3, height, width, pitch, 0, 0, byteCount});
        return untilComplete(1).back().state;
    };
    EXPECT_EQ(state(10, 10, 10, 100), 3);
    EXPECT_EQ(state(101, 1, 1, 101), 7);
    EXPECT_EQ(state(0, 10, 10, 0), 6);
    EXPECT_EQ(state(10, 0, 0, 0), 6);
    EXPECT_EQ(state(10, 0, 10, 100), 6);
    EXPECT_EQ(state(10, 10, 9, 90), 6);
    EXPECT_EQ(state(10, 10, 10, 99), 6);
    EXPECT_EQ(state(10, 10, 10, 101), 6);
    EXPECT_EQ(state(0x10000, 0x10000, 0x10000, 0), 6);
    EXPECT_EQ(state(0x10000, 0xFFFF, 0xFFFF, 0xFFFF0000), 7);
    EXPECT_EQ(put(0, 11, 2, std::vector<uint8_t>(35)), 0u);
    EXPECT_EQ(stateOf(2), "133:6:2");
}

TEST_F(ImageCommandsTest, BlockThatDoesNotGoWithTheAnnouncementEndsTheTransfer) {
    open();
    const auto announce = [&] {
        send(11, 1, {7, 2, 3, 1, 10, 10, 0, 0, 10});
        EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    };
    for (const uint32_t flags : {0u, 2u}) {  // does not begin
        announce();
        EXPECT_EQ(putBlock(ramp(10), flags, 0), kBadBlock);
        EXPECT_EQ(putBlock(ramp(10), 3, 0), kNothingToTransfer);
    }
    announce();  // too much at once
    EXPECT_EQ(putBlock(ramp(11), 3, 0), kBadBlock);
    announce();  // too much in the end
    EXPECT_EQ(putBlock(ramp(6), 1, 6), 0u);
    EXPECT_EQ(putBlock(ramp(5), 2, 0), kBadBlock);
    announce();  // begins twice
    EXPECT_EQ(putBlock(ramp(6), 1, 6), 0u);
    EXPECT_EQ(putBlock(ramp(4), 3, 0), kBadBlock);
    announce();  // ends too early
    EXPECT_EQ(putBlock(ramp(9), 3, 0), kBadBlock);
    announce();  // does not end
    EXPECT_EQ(putBlock(ramp(10), 1, 0), kBadBlock);
    EXPECT_EQ(putBlock(ramp(10), 3, 0), kNothingToTransfer);
    send(83, 2, {7, 2, 3});
    EXPECT_EQ(stateOf(2), "133:5:2");
}

TEST_F(ImageCommandsTest, TransferIsGivenUpByAReset) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 20\n");
    load(1, 7, 10);
    ask(2, 7, 10);
    send(1, 3);
    EXPECT_EQ(nextBriefs(2), "133:1:3 2:3:0");
    EXPECT_EQ(getBlock(10), "9005 0 0 238");
}

TEST_F(ImageCommandsTest, BuffersOfNoSizeAreRefused) {
    open();
    load(1, 7, 10);
    ask(2, 7, 10);
    uint8_t byte = 0;
    uint32_t moved = 0;
    uint32_t flags = 0;
    EXPECT_EQ(HoxiGetImage(0, &byte, 0, &moved, &flags), kBadArgument);
    EXPECT_EQ(HoxiPutImage(0, &byte, 0, &moved, 3), kBadArgument);
    EXPECT_EQ(HoxiGetImage(0, nullptr, 1, &moved, &flags), kBadArgument);
    EXPECT_EQ(HoxiGetImage(0, &byte, 1, nullptr, &flags), kBadArgument);
    EXPECT_EQ(HoxiGetImage(0, &byte, 1, &moved, nullptr), kBadArgument);
    EXPECT_EQ(getBlock(10), "0 10 3 3");
}

TEST_F(ImageCommandsTest, FreeReleasesTheImageAndItsMemory) {
    openText("[[scanner]]\nimage_memory = 10\n");
    load(1, 7, 10);
    send(11, 2, {8, 2, 3, 1, 1, 1, 0, 0, 1});
    EXPECT_EQ(stateOf(2), "133:7:2");
    send(12, 3, {7, 2, 4});
    EXPECT_EQ(stateOf(3), "133:5:3");
    send(12, 4, {7, 2, 3});
    EXPECT_EQ(nextBriefs(2), "133:1:4 133:3:4");
    send(12, 5, {7, 2, 3});
    EXPECT_EQ(nextBriefs(2), "133:1:5 133:5:5");
    load(6, 8, 10);
    send(12, 7, {7, 2});
    EXPECT_EQ(stateOf(7), "133:6:7");
}

TEST_F(ImageCommandsTest, ReferencesComeFromCalibrationAndCanBeCopiedBothWays) {
    openText("[[scanner]]\nslap_width = 20\nslap_height = 10\n");
    send(16, 1, {1, 2});
    EXPECT_EQ(stateOf(1), "133:5:1");
    send(34, 2, {1, 4, 2});
    EXPECT_EQ(stateOf(2), "133:3:2");
    send(14, 3, {1, 2});
    EXPECT_EQ(stateOf(3), "133:5:3");
    send(34, 4, {1, 12, 2});
    EXPECT_EQ(stateOf(4), "133:3:4");
    send(16, 5, {1, 2});
    send(14, 6, {1, 2});
    EXPECT_EQ(stateOf(5), "133:3:5");
    EXPECT_EQ(stateOf(6), "133:3:6");
    const std::vector<uint8_t> equal = fetchImage(7, 1, 39, 11, 200);
    const std::vector<uint8_t> dark = fetchImage(8, 1, 39, 29, 200);
    ASSERT_EQ(equal.size(), 200u);
    ASSERT_EQ(dark.size(), 200u);
    EXPECT_GT(*std::min_element(equal.begin(), equal.end()), 100);
    EXPECT_LT(*std::max_element(dark.begin(), dark.end()), 16);

    send(11, 9, {1, 39, 11, 10, 20, 20, 0, 0, 200});
    EXPECT_EQ(stateOf(9), "133:3:9");
    EXPECT_EQ(putBlock(ramp(200), 3, 200), 0u);
    send(17, 10, {1, 2});
    EXPECT_EQ(stateOf(10), "133:3:10");
    send(16, 11, {2, 2});
    EXPECT_EQ(stateOf(11), "133:3:11");
    EXPECT_EQ(fetchImage(12, 2, 39, 11, 200), ramp(200));
    send(15, 13, {9, 2});
    EXPECT_EQ(stateOf(13), "133:5:13");
}

TEST_F(ImageCommandsTest, ReferencesBelongToOneCameraAtATime) {
    open();
    for (const uint32_t code : {14u, 15u, 16u, 17u}) {
        for (const uint32_t mask : {0u, 3u, 16u, 0xFFFFFFFFu}) {
            send(code, 1, {1, mask});
            EXPECT_EQ(stateOf(1), "133:6:1");
        }
        send(code, 2, {1});
        EXPECT_EQ(stateOf(2), "133:6:2");
    }
}

class TransferFaultsTest : public ImageCommandsTest {
protected:
    void openFaulty(const std::string& keys, const std::string& function = "HoxiGetImage") {
        openText("[[transfer_fault]]\nfunction = '" + function + "'\n" + keys);
        if (function == "HoxiGetImage") {
            load(1, 7, 10);
            ask(2, 7, 10);
        }
    }
};

TEST_F(TransferFaultsTest, CallFailsAfterItHasMovedItsBlock) {
    openFaulty("result = 9050\nnth = 2\n");
    EXPECT_EQ(getBlock(4), "0 4 1 3");
    EXPECT_EQ(getBlock(4), "9050 4 0 7");
    EXPECT_EQ(getBlock(4), "0 2 2 11");
}

TEST_F(TransferFaultsTest, LessIsMovedThanWasAsked) {
    openFaulty("move = 3\ncount = 0\n");
    EXPECT_EQ(getBlock(10), "0 3 1 3");
    EXPECT_EQ(getBlock(7), "0 3 0 6");
    EXPECT_EQ(getBlock(2), "0 2 0 9");
    EXPECT_EQ(getBlock(2), "0 2 2 11");
}

TEST_F(TransferFaultsTest, NothingIsMovedAndTheCallSucceeds) {
    openFaulty("move = 0\n");
    EXPECT_EQ(getBlock(10), "0 0 1 238");
    EXPECT_EQ(getBlock(10), "0 10 2 3");
}

TEST_F(TransferFaultsTest, MoreIsClaimedThanWasMoved) {
    openFaulty("claim_more = 5\n");
    EXPECT_EQ(getBlock(4), "0 9 1 3");
    EXPECT_EQ(getBlock(4), "0 4 0 7");
}

TEST_F(TransferFaultsTest, ClaimsEndWithTheirWord) {
    openFaulty("claim_more = 0xFFFFFFFF\n");
    EXPECT_EQ(getBlock(4), "0 4294967295 1 3");
}

TEST_F(TransferFaultsTest, LastFlagIsEarlyOrMissing) {
    openFaulty("last_flag = 'set'\n[[transfer_fault]]\nfunction = 'HoxiGetImage'\nlast_flag = 'clear'\ncount = 0\n");
    EXPECT_EQ(getBlock(4), "0 4 3 3");
    EXPECT_EQ(getBlock(6), "0 6 0 7");
    EXPECT_EQ(nextBriefs(2), "26:3:2 133:3:2");
}

TEST_F(TransferFaultsTest, OneByteArrivesCorrupted) {
    openFaulty("corrupt = 2\nnth = 2\n");
    uint8_t block[4] = {};
    uint32_t moved = 0;
    uint32_t flags = 0;
    for (const uint8_t expected : {uint8_t{5}, uint8_t{0xFF ^ 9}, uint8_t{0}}) {
        block[2] = 0;
        EXPECT_EQ(HoxiGetImage(0, block, 4, &moved, &flags), 0u);
        EXPECT_EQ(block[2], expected);
    }
}

TEST_F(TransferFaultsTest, CorruptedPlaceBehindTheBlockHurtsNothing) {
    openFaulty("corrupt = 10\n");
    EXPECT_EQ(getBlock(10), "0 10 3 3");
}

TEST_F(TransferFaultsTest, PutsCanBeShortCorruptedOrFail) {
    openFaulty("move = 3\ncorrupt = 1\nresult = 9051\nclaim_more = 1\n", "HoxiPutImage");
    send(11, 1, {7, 2, 3, 1, 10, 10, 0, 0, 10});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    std::vector<uint8_t> all = ramp(10);
    EXPECT_EQ(putBlock(all, 3, 4), 9051u);
    EXPECT_EQ(putBlock({all.begin() + 3, all.end()}, 2, 7), 0u);
    all[1] ^= 0xFF;
    EXPECT_EQ(fetchImage(2, 7, 2, 3, 10), all);
}

TEST_F(TransferFaultsTest, FaultsBelongToTheirScannerAndFunction) {
    openText(
        "library.scanners = 2\n[[transfer_fault]]\nfunction = 'HoxiGetImage'\nscanner = 1\nresult = 9\n"
        "[[transfer_fault]]\nfunction = 'HoxiPutImage'\nnth = 2\nresult = 8\n");
    load(1, 7, 10);
    ask(2, 7, 10);
    EXPECT_EQ(getBlock(10), "0 10 3 3");
}

TEST_F(TransferFaultsTest, CallsWithoutATransferAreNotCounted) {
    openText("[[transfer_fault]]\nfunction = 'HoxiGetImage'\nresult = 9050\n");
    EXPECT_EQ(getBlock(10), "9005 0 0 238");
    load(1, 7, 10);
    ask(2, 7, 10);
    EXPECT_EQ(getBlock(4), "9050 4 1 3");
}

TEST_F(TransferFaultsTest, EachReportOfATransferCanBeDroppedByItself) {
    openText(
        "[[answer_fault]]\ncommand = 10\nstage = 'ready'\ndrop = true\n"
        "[[answer_fault]]\ncommand = 10\nstage = 'done'\nnth = 2\ndrop = true\n"
        "[[answer_fault]]\ncommand = 10\nstage = 'complete'\npart = 1\nnth = 3\ndrop = true\n"
        "[[answer_fault]]\ncommand = 10\nstage = 'complete'\npart = 2\nnth = 4\ndrop = true\n"
        "[[answer_fault]]\ncommand = 10\nstage = 'done'\nvalue = 9\nnth = 5\n");
    load(1, 7, 10);
    const char* const expected[] = {"133:1:2 133:3:2 26:3:2 133:3:2", "133:1:3 133:3:3 26:3:3 133:3:3",
                                    "133:1:4 26:3:4 26:3:4 133:3:4", "133:1:5 133:3:5 26:3:5 26:3:5"};
    const size_t before[] = {2, 3, 2, 3};
    for (uint32_t i = 0; i < 4; ++i) {
        send(10, 2 + i, {7, 2, 3, 10});
        const std::string briefs = nextBriefs(before[i]);
        EXPECT_EQ(getBlock(10), "0 10 3 3");
        EXPECT_EQ(briefs + " " + nextBriefs(4 - before[i]), expected[i]);
    }
    ask(6, 7, 10);
    getBlock(10);
    EXPECT_EQ(next().words(1), "9");
}

}  // namespace
}  // namespace simulator
