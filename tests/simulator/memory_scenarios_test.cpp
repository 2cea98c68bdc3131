// Every file of the scenarios folder that is about the memory channel and the display does what its first lines say.
#include "platform/clock.h"
#include "simulator/bus.h"
#include "transfer_test.h"

namespace simulator {
namespace {

class MemoryScenariosTest : public TransferTest {};

TEST_F(MemoryScenariosTest, MemoryTransferFails) {
    openFile("memory-transfer-fails");
    Bytes values;
    ask(90, 1, {8, 8});
    EXPECT_EQ(putMemory(ramp(8), 3), "9061 8");
    EXPECT_EQ(stateOf(1), "133:3:1");
    ask(91, 2, {8, 8});
    EXPECT_EQ(getMemory(8, values), "9062 8 3");
    EXPECT_EQ(stateOf(2), "133:3:2");
    setParameters(3, 8, ramp(8, 9));
    EXPECT_EQ(getParameters(4, 8, 8), ramp(8, 9));
}

TEST_F(MemoryScenariosTest, MemoryTransferShort) {
    openFile("memory-transfer-short");
    ask(90, 1, {9, 256});
    EXPECT_EQ(putMemory(ramp(256), 3), "0 100");
    EXPECT_EQ(putMemory(ramp(156, 103), 2), "0 100");
    EXPECT_EQ(putMemory(ramp(56, 203), 2), "0 56");
    EXPECT_EQ(stateOf(1), "133:3:1");
    ask(91, 2, {9, 256});
    Bytes values;
    EXPECT_EQ(getMemory(256, values), "0 100 1");
    EXPECT_EQ(getMemory(156, values), "0 100 0");
    EXPECT_EQ(getMemory(56, values), "0 56 2");
    EXPECT_EQ(values, ramp(256));
}

TEST_F(MemoryScenariosTest, ParametersCorrupted) {
    openFile("parameters-corrupted");
    setParameters(1, 13, {1, 2, 3, 4});
    EXPECT_EQ(getParameters(2, 13, 4), (Bytes{0xFE, 2, 3, 4}));
    EXPECT_EQ(getParameters(3, 13, 4), (Bytes{0xFE, 2, 3, 4}));
}

TEST_F(MemoryScenariosTest, UploadNotReady) {
    openFile("upload-not-ready");
    announceUpload(20, 1, 8);
    send(0, 2);
    EXPECT_EQ(nextBriefs(2), "133:1:1 1:3:2");
    upload(20, 3, ramp(8));
    EXPECT_EQ(flashContents(0, 20), ramp(8));
}

TEST_F(MemoryScenariosTest, UploadNotRecorded) {
    openFile("upload-not-recorded");
    announceUpload(20, 1, 8);
    EXPECT_EQ(nextBriefs(2), "133:1:1 27:3:1");
    EXPECT_EQ(putMemory(ramp(8), 3), "0 8");
    EXPECT_EQ(next().brief(), "133:7:1");
    upload(20, 2, ramp(8));
}

TEST_F(MemoryScenariosTest, SlowTransfers) {
    openFile("slow-transfers");
    announceUpload(20, 1, 8);
    nextBriefs(2);
    const uint64_t start = platform::nowMs();
    EXPECT_EQ(putMemory(ramp(8), 3), "0 8");
    EXPECT_GE(platform::nowMs() - start, 200u);
}

TEST_F(MemoryScenariosTest, DisplayInAFile) {
    openFile("display-in-a-file");
    EXPECT_EQ(bus().scanners.at(0).plan().displayFile, "local-display.tif");
    EXPECT_EQ(bus().scanners.at(0).plan().remoteMapFile, "remote-map.tif");
}

}  // namespace
}  // namespace simulator
