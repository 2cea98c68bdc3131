#include "link/block_transfer.h"

#include <numeric>

#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::FakeHoxi;
using support::fakeHoxi;
using support::fakePlatform;
using support::HoxiCall;

class BlockTransfer : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakeHoxi().dataBufSize = 4;
        startLink();
        std::iota(data.begin(), data.end(), uint8_t{1});
    }

    // The sizes and flags of the calls made.
    static std::vector<std::vector<uint64_t>> calls() {
        std::vector<std::vector<uint64_t>> seen;
        for (const HoxiCall& call : fakeHoxi().calls)
            seen.push_back({call.numbers.begin() + 1, call.numbers.end()});
        return seen;
    }

    std::vector<uint8_t> data = std::vector<uint8_t>(10);
    std::vector<uint8_t> buffer = std::vector<uint8_t>(10);
};

using Calls = std::vector<std::vector<uint64_t>>;

TEST_F(BlockTransfer, PutsBlocksMarkingTheFirstAndTheLast) {
    EXPECT_EQ(putBlocks(HoxiPutMemory, data), 0u);
    EXPECT_EQ(calls(), (Calls{{4, 1}, {4, 0}, {2, 2}}));
    EXPECT_EQ(fakeHoxi().calls[1].bytes, (std::vector<uint8_t>{5, 6, 7, 8}));
}

TEST_F(BlockTransfer, PutsInOneCallWhatFitsABlock) {
    EXPECT_EQ(putBlocks(HoxiPutBitmap, std::span(data).first(4)), 0u);
    EXPECT_EQ(calls(), (Calls{{4, 3}}));
    EXPECT_EQ(fakeHoxi().calls[0].name, "PutBitmap");
}

TEST_F(BlockTransfer, PutsNothingOfNothing) {
    EXPECT_EQ(putBlocks(HoxiPutMemory, {}), 0u);
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(BlockTransfer, PutsToTheCurrentScannerInItsBlocks) {
    fakeHoxi().scannerCount = 2;
    startLink(2);
    state.currentScanner = 1;
    state.bufferSizes[1].data = 6;
    putBlocks(HoxiPutMemory, data);
    EXPECT_EQ(calls(), (Calls{{6, 1}, {4, 2}}));
    EXPECT_EQ(fakeHoxi().calls[0].numbers[0], 1u);
}

TEST_F(BlockTransfer, PutGoesOnBehindAShortCall) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.moved = std::min(call.moved, 3u); };
    EXPECT_EQ(putBlocks(HoxiPutMemory, data), 0u);
    EXPECT_EQ(calls(), (Calls{{4, 1}, {4, 0}, {4, 2}, {1, 2}}));
    EXPECT_EQ(fakeHoxi().calls[1].bytes, (std::vector<uint8_t>{4, 5, 6, 7}));
}

TEST_F(BlockTransfer, PutStopsAtAFailure) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) {
        call.result = fakeHoxi().calls.size() == 2 ? 9050 : 0;
    };
    EXPECT_EQ(putBlocks(HoxiPutMemory, data), 9050u);
    EXPECT_EQ(calls().size(), 2u);
}

TEST_F(BlockTransfer, PutThatMovesNothingIsAFailure) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.moved = 0; };
    EXPECT_EQ(putBlocks(HoxiPutMemory, data), kTransferNotBelieved);
    EXPECT_EQ(calls().size(), 1u);
}

TEST_F(BlockTransfer, PutThatClaimsMoreThanItWasGivenIsAFailure) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { ++call.moved; };
    EXPECT_EQ(putBlocks(HoxiPutMemory, data), kTransferNotBelieved);
}

TEST_F(BlockTransfer, ScannerWithoutBufferIsAFailure) {
    state.bufferSizes[0].data = 0;
    EXPECT_EQ(putBlocks(HoxiPutMemory, data), kTransferNotBelieved);
    EXPECT_EQ(getBlocks(HoxiGetMemory, buffer).result, kTransferNotBelieved);
}

TEST_F(BlockTransfer, WholeIsFirstAndLastWhateverTheBlockSize) {
    EXPECT_EQ(putWhole(HoxiPutMemory, data), 0u);
    EXPECT_EQ(calls(), (Calls{{10, 3}}));
}

TEST_F(BlockTransfer, WholeThatIsNotMovedAsAWholeIsAFailure) {
    for (const uint32_t moved : {0u, 9u, 11u}) {
        fakeHoxi().onTransfer = [=](const std::string&, FakeHoxi::Channel& call) { call.moved = moved; };
        EXPECT_EQ(putWhole(HoxiPutMemory, data), kTransferNotBelieved) << moved;
    }
}

TEST_F(BlockTransfer, WholeThatFailsGivesItsResult) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call = {9050, 0, 0}; };
    EXPECT_EQ(putWhole(HoxiPutMemory, data), 9050u);
}

TEST_F(BlockTransfer, GetsBlocksUntilTheLast) {
    fakeHoxi().toGive = data;
    const Moved received = getBlocks(HoxiGetImage, buffer);
    EXPECT_EQ(received.result, 0u);
    EXPECT_EQ(received.moved, 10u);
    EXPECT_TRUE(received.lastBlock);
    EXPECT_EQ(buffer, data);
    EXPECT_EQ(calls(), (Calls{{4}, {4}, {2}}));
}

TEST_F(BlockTransfer, GetEndsAtAnEarlyLastBlock) {
    fakeHoxi().toGive = data;
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.flags = 2; };
    const Moved received = getBlocks(HoxiGetImage, buffer);
    EXPECT_EQ(received.moved, 4u);
    EXPECT_TRUE(received.lastBlock);
}

TEST_F(BlockTransfer, GetEndsWhenTheBufferIsFullWithoutALastBlock) {
    fakeHoxi().toGive = data;
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.flags = 0; };
    const Moved received = getBlocks(HoxiGetImage, buffer);
    EXPECT_EQ(received.moved, 10u);
    EXPECT_FALSE(received.lastBlock);
}

TEST_F(BlockTransfer, OtherFlagsAreNoLastBlock) {
    fakeHoxi().toGive = data;
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.flags = 1; };
    EXPECT_FALSE(getBlocks(HoxiGetImage, buffer).lastBlock);
}

TEST_F(BlockTransfer, GetTellsWhatAFailedCallHasMoved) {
    fakeHoxi().toGive = data;
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) {
        call.result = fakeHoxi().calls.size() == 2 ? 9050 : 0;
    };
    const Moved received = getBlocks(HoxiGetImage, buffer);
    EXPECT_EQ(received.result, 9050u);
    EXPECT_EQ(received.moved, 8u);
}

TEST_F(BlockTransfer, GetThatMovesNothingOrTooMuchIsAFailureAndWritesNothing) {
    fakeHoxi().toGive = data;
    for (const uint32_t claimed : {0u, 5u}) {
        fakeHoxi().onTransfer = [=](const std::string&, FakeHoxi::Channel& call) { call.moved = claimed; };
        EXPECT_EQ(getBlocks(HoxiGetImage, buffer).result, kTransferNotBelieved) << claimed;
        EXPECT_EQ(getBlocks(HoxiGetImage, buffer).moved, 0u) << claimed;
    }
}

TEST_F(BlockTransfer, LongWorkShowsItsProgressAndErasesIt) {
    fakePlatform().outputColumns = 80;
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel&) { fakePlatform().nowMs += 600; };
    EXPECT_EQ(printed([this] { putBlocks(HoxiPutMemory, data); }),
              "\r8 of 10 bytes, 80 %, 0.0 MB/s, 0 s left\r" + std::string(39, ' ') + "\r");
}

}  // namespace
}  // namespace scannerlink
