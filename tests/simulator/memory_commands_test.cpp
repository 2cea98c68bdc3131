// Parameter sets and uploads, and the channel that their data take.
#include "support/parameter_lengths.h"
#include "transfer_test.h"

namespace simulator {
namespace {

class MemoryCommandsTest : public TransferTest {};

TEST_F(MemoryCommandsTest, ReadyIsReportedThenCompleteWhenTheDataHaveArrived) {
    open();
    send(90, 5, {8, 8});
    EXPECT_EQ(next().brief(), "133:1:5");
    const SeenReport ready = next();
    EXPECT_EQ(ready.brief(), "27:3:5");
    EXPECT_EQ(ready.size, 20u);
    EXPECT_EQ(ready.words(5), "1 2 0 0 0");
    EXPECT_EQ(putMemory(ramp(4), 1), "0 4");
    EXPECT_EQ(putMemory(ramp(4, 7), 2), "0 4");
    EXPECT_EQ(next().brief(), "133:3:5");
    EXPECT_EQ(getParameters(6, 8, 8), ramp(8));
}

TEST_F(MemoryCommandsTest, ValuesComeInBlocksWithFlags) {
    openText("[[scanner]]\ndata_buffer_size = 4\n");
    send(90, 1, {14, 12});
    nextBriefs(2);
    EXPECT_EQ(putMemory(ramp(12), 3), "0 4");
    EXPECT_EQ(putMemory(ramp(4, 7), 0), "0 4");
    EXPECT_EQ(putMemory(ramp(4, 11), 2), "0 4");
    EXPECT_EQ(next().brief(), "133:3:1");
    send(91, 2, {14, 12});
    next();
    EXPECT_EQ(next().words(2), "1 1");
    Bytes values;
    EXPECT_EQ(getMemory(12, values), "0 4 1");
    EXPECT_EQ(getMemory(12, values), "0 4 0");
    EXPECT_EQ(getMemory(12, values), "0 4 2");
    EXPECT_EQ(values, ramp(12));
    EXPECT_EQ(next().brief(), "133:3:2");
    EXPECT_EQ(getMemory(12, values), "9005 0 0");
}

TEST_F(MemoryCommandsTest, NothingMovesBeforeTheScannerIsReady) {
    openText("[[scanner]]\nwork_ms = 3600000\n");
    send(90, 1, {13, 4});
    EXPECT_EQ(next().brief(), "133:1:1");
    EXPECT_EQ(putMemory(ramp(4), 3), "9005 0");
}

TEST_F(MemoryCommandsTest, TransferGoesOneWayOnly) {
    open();
    Bytes values;
    ask(90, 1, {13, 4});
    EXPECT_EQ(getMemory(4, values), "9005 0 0");
    EXPECT_EQ(putMemory(ramp(4), 3), "0 4");
    EXPECT_EQ(next().brief(), "133:3:1");
    ask(91, 2, {13, 4});
    EXPECT_EQ(putMemory(ramp(4), 3), "9005 0");
}

TEST_F(MemoryCommandsTest, EverySetHasItsLength) {
    open();
    uint32_t tag = 0;
    for (uint32_t set = 0; set < std::size(support::kParameterLengths); ++set) {
        if (support::kParameterLengths[set] != 0) {
            getParameters(++tag, set, support::kParameterLengths[set]);
        }
    }
    EXPECT_EQ(tag, 105u);
}

TEST_F(MemoryCommandsTest, UnknownSetsAreRefusedWithoutATransfer) {
    open();
    uint32_t tag = 0;
    for (const uint32_t code : {90U, 91U, 96U}) {
        for (const uint32_t set : {44U, 106U, 0xFFFFFFFFU}) {
            send(code, ++tag, {set, 4});
            const std::string end = ":" + std::to_string(tag);
            EXPECT_EQ(nextBriefs(2), "133:1" + end + " 133:5" + end);
        }
    }
    EXPECT_EQ(putMemory(ramp(4), 3), "9005 0");
}

TEST_F(MemoryCommandsTest, WrongLengthsAreRefusedWithoutATransfer) {
    open();
    uint32_t tag = 0;
    for (const uint32_t code : {90U, 91U, 96U}) {
        for (const uint32_t length : {4U, 7U, 9U, 12U}) {
            send(code, ++tag, {8, length});
            const std::string end = ":" + std::to_string(tag);
            EXPECT_EQ(nextBriefs(2), "133:1" + end + " 133:6" + end);
        }
    }
    EXPECT_EQ(putMemory(ramp(4), 3), "9005 0");
}

TEST_F(MemoryCommandsTest, CheckTellsValidAndSaveableSets) {
    open();
    send(94, 1, {105, 28});
    EXPECT_EQ(nextBriefs(3), "133:1:1 94:3:1 133:3:1");
}

TEST_F(MemoryCommandsTest, CheckOfAnUnknownSetTellsNothingGoodOfIt) {
    open();
    send(94, 1, {44, 0});
    EXPECT_EQ(nextBriefs(3), "133:1:1 94:0:1 133:3:1");
    send(94, 2, {106, 0});
    EXPECT_EQ(nextBriefs(3), "133:1:2 94:0:2 133:3:2");
}

TEST_F(MemoryCommandsTest, CheckTellsModifiedSetsUntilTheyAreSaved) {
    open();
    setParameters(1, 13, ramp(4));
    send(94, 2, {13, 4});
    EXPECT_EQ(nextBriefs(3), "133:1:2 94:7:2 133:3:2");
    send(92, 3);
    EXPECT_EQ(nextBriefs(2), "133:1:3 133:3:3");
    send(94, 4, {13, 4});
    EXPECT_EQ(nextBriefs(3), "133:1:4 94:3:4 133:3:4");
}

TEST_F(MemoryCommandsTest, CheckWithoutASetIsRefused) {
    open();
    send(94, 1);
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:6:1");
}

TEST_F(MemoryCommandsTest, FirstSetDescribesTheScanner) {
    openText("[[scanner]]\nmake = 'TAMSEL'\nmodel = 'MX1500'\nserial = 'S-17'\nyear = 2023\nmonth = 4\nday = 9\n");
    Bytes expected(40);
    std::copy_n("TAMSEL", 6, expected.begin());
    std::copy_n("MX1500", 6, expected.begin() + 8);
    std::copy_n("S-17", 4, expected.begin() + 24);
    const Bytes numbers = wordsOf({2023, 4, 9, 500});
    expected.insert(expected.end(), numbers.begin(), numbers.end());
    EXPECT_EQ(getParameters(1, 0, 56), expected);
}

TEST_F(MemoryCommandsTest, CameraSetHasCameraDefaults) {
    open();
    EXPECT_EQ(getParameters(1, 63, 40, 96), wordsOf({1200, 8, 8, 32, 32, 1000, 8, 8, 32, 32}));
}

TEST_F(MemoryCommandsTest, DefaultsComeFromTheSeed) {
    openText("[[scanner]]\n[[scanner]]\nseed = 2\n");
    const Bytes first = getParameters(1, 9, 256);
    EXPECT_EQ(getParameters(2, 9, 256, 96), first);
    EXPECT_NE(getParameters(3, 19, 256), first);
    for (size_t i = 0; i < first.size(); i += 4) {
        EXPECT_LT(first[i], 100);
        EXPECT_EQ(Bytes(first.begin() + i + 1, first.begin() + i + 4), Bytes(3));
    }
    resetBus();
    openText("[[scanner]]\nseed = 2\n");
    EXPECT_NE(getParameters(1, 9, 256), first);
}

TEST_F(MemoryCommandsTest, DefaultsStayWhatTheyWere) {
    open();
    const Bytes defaults = getParameters(1, 8, 8, 96);
    setParameters(2, 8, ramp(8));
    EXPECT_EQ(getParameters(3, 8, 8, 96), defaults);
    send(95, 4);
    EXPECT_EQ(nextBriefs(2), "133:1:4 133:3:4");
    EXPECT_EQ(getParameters(5, 8, 8), defaults);
}

TEST_F(MemoryCommandsTest, RestoreBringsBackWhatWasSaved) {
    open();
    setParameters(1, 8, ramp(8));
    send(92, 2);
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:3:2");
    setParameters(3, 8, ramp(8, 100));
    send(93, 4);
    EXPECT_EQ(nextBriefs(2), "133:1:4 133:3:4");
    EXPECT_EQ(getParameters(5, 8, 8), ramp(8));
}

TEST_F(MemoryCommandsTest, ResetLosesWhatWasNotSaved) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 0\n");
    setParameters(1, 8, ramp(8));
    send(92, 2);
    nextBriefs(2);
    setParameters(3, 8, ramp(8, 100));
    upload(28, 4, ramp(8));
    send(1, 5);
    EXPECT_EQ(nextBriefs(2), "2:3:0 133:1:5");
    EXPECT_EQ(getParameters(6, 8, 8), ramp(8));
    EXPECT_EQ(flashContents(0, 28), ramp(8));
}

TEST_F(MemoryCommandsTest, EveryUploadIsRecordedByteForByte) {
    open();
    uint32_t tag = 0;
    for (const uint32_t code : {20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 140, 141, 142, 143, 144}) {
        upload(code, ++tag, ramp(1000, static_cast<uint8_t>(code)));
    }
    for (const uint32_t code : {20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 140, 141, 142, 143, 144}) {
        EXPECT_EQ(flashContents(0, code), ramp(1000, static_cast<uint8_t>(code)));
    }
}

TEST_F(MemoryCommandsTest, UploadIsCompleteOnceRecorded) {
    openText("[[scanner]]\nrecord_ms = 86400000\n");
    announceUpload(20, 1, 8);
    EXPECT_EQ(nextBriefs(2), "133:1:1 27:3:1");
    EXPECT_EQ(putMemory(ramp(8), 3), "0 8");
    send(0, 2);
    EXPECT_EQ(next().brief(), "1:3:2");
}

TEST_F(MemoryCommandsTest, BrokenUploadLeavesTheOldContent) {
    open();
    upload(26, 1, ramp(8));
    struct Broken {
        size_t size;
        uint32_t flags;
    };
    uint32_t tag = 1;
    for (const Broken& broken : {Broken{4, 3}, Broken{8, 1}, Broken{9, 3}, Broken{8, 2}}) {
        announceUpload(26, ++tag, 8);
        nextBriefs(2);
        EXPECT_EQ(putMemory(ramp(broken.size, 50), broken.flags), "9010 0");
        EXPECT_EQ(next().brief(), "133:6:" + std::to_string(tag));
        EXPECT_EQ(putMemory(ramp(8, 50), 3), "9005 0");
    }
    EXPECT_EQ(flashContents(0, 26), ramp(8));
}

TEST_F(MemoryCommandsTest, UploadsOfImpossibleSizesAreRefused) {
    open();
    announceUpload(20, 1, 0);
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:6:1");
    announceUpload(20, 2, 0x8000001);
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:7:2");
    announceUpload(20, 3, 0x8000000);
    EXPECT_EQ(nextBriefs(2), "133:1:3 27:3:3");
    send(20, 4);
    EXPECT_EQ(nextBriefs(2), "133:1:4 133:6:4");
}

TEST_F(MemoryCommandsTest, ANewTransferTakesThePlaceOfTheOld) {
    open();
    ask(90, 1, {8, 8});
    EXPECT_EQ(putMemory(ramp(4), 1), "0 4");
    setParameters(2, 13, ramp(4, 9));
    EXPECT_EQ(putMemory(ramp(4), 2), "9005 0");
    EXPECT_EQ(getParameters(3, 13, 4), ramp(4, 9));
}

TEST_F(MemoryCommandsTest, FaultsClaimCorruptAndFlag) {
    openText(
        "[[transfer_fault]]\nfunction = 'HoxiGetMemory'\nclaim_more = 2\nlast_flag = 'set'\nmove = 4\n"
        "[[transfer_fault]]\nfunction = 'HoxiPutMemory'\ncorrupt = 1\nresult = 77\n");
    ask(90, 1, {8, 8});
    EXPECT_EQ(putMemory(ramp(8), 3), "77 8");
    EXPECT_EQ(next().brief(), "133:3:1");
    ask(91, 2, {8, 8});
    Bytes values;
    EXPECT_EQ(getMemory(8, values), "0 6 3");
    EXPECT_EQ(Bytes(values.begin(), values.begin() + 4), (Bytes{3, 0xFB, 5, 6}));
    EXPECT_EQ(getMemory(8, values), "0 4 2");
}

}  // namespace
}  // namespace simulator
