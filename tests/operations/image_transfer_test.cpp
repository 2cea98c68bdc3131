#include "operations/image_transfer.h"

#include "console/console_state.h"
#include "image_transfer_test.h"
#include "support/fake_tiff.h"

namespace operations {
namespace {

using support::callNames;
using support::fakeTiff;
using support::makeTiff;
using support::packetsPut;

TEST_F(ImageTransfer, SendFetchesTheImageIntoAFile) {
    reportInfo(2, 5);
    fakeHoxi().toGive = counting(10);
    EXPECT_EQ(type("si out.tif 5 6 7"), "");
    EXPECT_EQ(packetsPut().at(0), packet64({10, 1, 16, 5, 6, 7, 10}));
    EXPECT_EQ(callNames(), (Names{"PutCommand", "GetImage", "GetImage", "GetImage"}));
    EXPECT_EQ(fakeHoxi().calls[3].numbers, (std::vector<uint64_t>{0, 2}));
    const auto& file = fakeTiff().files.at("out.tif");
    EXPECT_EQ(file.pixels, counting(10));
    EXPECT_EQ(file.info.depth, 12u);
    EXPECT_EQ(file.info.width, 5u);
    EXPECT_EQ(file.info.height, 2u);
    EXPECT_EQ(file.info.v_res, 500);
    EXPECT_EQ(file.info.h_res, 501);
    EXPECT_EQ(file.info.first, 1);
    EXPECT_EQ(file.info.second, 0);
    EXPECT_FALSE(console::errorFlagged());
}

TEST_F(ImageTransfer, SendAsksTheCurrentScanner) {
    startLink(2);
    scannerlink::state.currentScanner = 1;
    scannerlink::state.bufferSizes[1].data = 4;
    reportInfo(1, 4, 1);
    fakeHoxi().toGive = counting(4);
    EXPECT_EQ(type("si out.tif 5 6 7"), "");
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, counting(4));
}

TEST_F(ImageTransfer, SendMovesAnImageSmallerThanABlockInOneCall) {
    reportInfo(1, 4);
    fakeHoxi().toGive = counting(4);
    type("si out.tif 5 6 7");
    EXPECT_EQ(callNames(), (Names{"PutCommand", "GetImage"}));
}

TEST_F(ImageTransfer, SendIgnoresTheBlockSizeOfTheLine) {
    reportInfo(1, 4);
    fakeHoxi().toGive = counting(4);
    EXPECT_EQ(type("si out.tif 5 6 7 1"), "");
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 4}));
}

TEST_F(ImageTransfer, SendBeforeAnyImageInformationSendsNothingYetUsesTheTag) {
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: no STA_IMAGE_INFO available, can't send_image\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(ImageTransfer, SendOfAnotherImageDoesNotMatch) {
    reportInfo(2, 5);
    for (const char* line : {"si out.tif 4 6 7", "si out.tif 5 5 7", "si out.tif 5 6 8"})
        EXPECT_EQ(type(line), "TamTest: STA_IMAGE_INFO doesn't match, can't send_image\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ImageTransfer, SendNeedsFourArguments) {
    for (const char* line : {"si", "si f", "si f 1", "si f 1 2"})
        EXPECT_EQ(type(line).substr(0, 58), "TamTest: Missing parameter - syntax for Send_Image(si) is:");
    EXPECT_EQ(scannerlink::state.nextTag, 5u);
}

TEST_F(ImageTransfer, SendOfAnImageWithoutPixelsOrBeyondMemoryIsRefused) {
    for (const auto& [height, width] : std::vector<std::pair<uint32_t, uint32_t>>{
             {0, 5}, {5, 0}, {0xFFFFFFFF, 0xFFFFFFFF}, {0x10000, 0x10000}, {0x8000, 0x10000}}) {
        reportInfo(height, width);
        EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: image buffer allocation failed\n");
    }
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ImageTransfer, SendThatIsNotCompletedIsTold) {
    reportInfo(1, 4);
    completes = false;
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: didn't get send_image cmd complete status\n");
    EXPECT_FALSE(console::errorFlagged());
}

TEST_F(ImageTransfer, SendWaitsThirtySecondsForTheCommandAndTenForTheTransfer) {
    reportInfo(1, 4);
    ready = false;
    EXPECT_EQ(durationOf("si out.tif 5 6 7"), 10010u);
    completes = false;
    EXPECT_EQ(durationOf("si out.tif 5 6 7"), 30010u);
}

TEST_F(ImageTransfer, SendWaitsTenSecondsForTheEndOfTheTransfer) {
    reportInfo(1, 4);
    fakeHoxi().toGive = counting(4);
    done = false;
    EXPECT_EQ(durationOf("si out.tif 5 6 7"), 10 + 10010u);
}

TEST_F(ImageTransfer, SendThatIsNotReadyIsTold) {
    reportInfo(1, 4);
    ready = false;
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: didn't get xfer ready confirmation\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
    EXPECT_TRUE(fakeTiff().files.empty());
}

TEST_F(ImageTransfer, SendThatIsNotDoneIsToldBehindTheFile) {
    reportInfo(1, 4);
    fakeHoxi().toGive = counting(4);
    done = false;
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: didn't get xfer done confirmation\n");
    EXPECT_EQ(fakeTiff().files.count("out.tif"), 1u);
}

TEST_F(ImageTransfer, RefusedSendEndsIt) {
    reportInfo(1, 4);
    refusal = 9020;
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: Failure in HoxiPutCommand - 9020\n");
}

TEST_F(ImageTransfer, FailedGetIsToldFlaggedAndWritesNoFile) {
    reportInfo(2, 4);
    fakeHoxi().toGive = counting(8);
    rule = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9050; };
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: failed in HoxiGetImage - 9050\n");
    EXPECT_EQ(console::state.errorFlag, 9050u);
    EXPECT_TRUE(fakeTiff().files.empty());
}

TEST_F(ImageTransfer, LastFlagBeforeTheEndIsAnErrorAndTheFileIsStillWritten) {
    reportInfo(2, 4);
    fakeHoxi().toGive = counting(8);
    done = false;
    rule = [](const std::string&, FakeHoxi::Channel& call) { call.flags = 2; };
    EXPECT_EQ(type("si out.tif 5 6 7"),
              "TamTest: got last xfer tag before image end\nTamTest: didn't get xfer done confirmation\n");
    EXPECT_EQ(console::state.errorFlag, 9100u);
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, (Bytes{1, 2, 3, 4, 0, 0, 0, 0}));
}

TEST_F(ImageTransfer, LastFlagWithoutABlockIsAnErrorAndTheFileIsStillWritten) {
    reportInfo(2, 4);
    fakeHoxi().toGive = counting(8);
    done = false;
    rule = [](const std::string&, FakeHoxi::Channel& call) {
        if (fakeHoxi().given == 4)
            call = {.result = 0, .moved = 0, .flags = 2};
    };
    EXPECT_EQ(type("si out.tif 5 6 7"),
              "TamTest: got last xfer tag before image end\nTamTest: didn't get xfer done confirmation\n");
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, (Bytes{1, 2, 3, 4, 0, 0, 0, 0}));
}

TEST_F(ImageTransfer, MissingLastFlagIsAnErrorAndTheFileIsStillWritten) {
    reportInfo(2, 4);
    fakeHoxi().toGive = counting(8);
    rule = [](const std::string&, FakeHoxi::Channel& call) { call.flags = 0; };
    EXPECT_EQ(type("si out.tif 5 6 7"), "TamTest: no last xfer tag, but image completely rcvd\n");
    EXPECT_EQ(console::state.errorFlag, 9100u);
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, counting(8));
}

struct TiffResultCase {
    int32_t result;
    const char* message;
};

class TiffResult : public ImageTransfer, public ::testing::WithParamInterface<TiffResultCase> {};

TEST_P(TiffResult, OfWritingIsTold) {
    reportInfo(1, 4);
    fakeHoxi().toGive = counting(4);
    fakeTiff().writeResult = GetParam().result;
    EXPECT_EQ(type("si out.tif 5 6 7"), GetParam().message);
    EXPECT_FALSE(console::errorFlagged());
}

TEST_P(TiffResult, OfReadingIsTold) {
    fakeTiff().files["in.tif"] = makeTiff(2, 2);
    fakeTiff().readResult = GetParam().result;
    EXPECT_EQ(type("ri in.tif 1 2 3"), GetParam().message);
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

INSTANTIATE_TEST_SUITE_P(Results, TiffResult,
                         ::testing::Values(TiffResultCase{-3, "TamTest: Error writing TIFF file\n"},
                                           TiffResultCase{-2, "TamTest: Error reading TIFF file\n"},
                                           TiffResultCase{-1, "TamTest: Error opening TIFF file\n"},
                                           TiffResultCase{7, "TamTest: Error opening TIFF file\n"}));

TEST_F(ImageTransfer, RecvGivesTheFileToTheScanner) {
    fakeTiff().files["in.tif"] = makeTiff(5, 2);
    EXPECT_EQ(type("ri in.tif 1 2 3"), "");
    EXPECT_EQ(packetsPut().at(0), packet64({11, 1, 36, 1, 2, 3, 2, 5, 5, 501, 500, 10}));
    ASSERT_EQ(callNames(), (Names{"PutCommand", "PutImage", "PutImage", "PutImage"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 4, 1}));
    EXPECT_EQ(fakeHoxi().calls[2].numbers, (std::vector<uint64_t>{0, 4, 0}));
    EXPECT_EQ(fakeHoxi().calls[3].numbers, (std::vector<uint64_t>{0, 2, 2}));
    EXPECT_EQ(put(), (Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(ImageTransfer, RecvNeedsFourArguments) {
    for (const char* line : {"ri", "ri f", "ri f 1", "ri f 1 2"})
        EXPECT_EQ(type(line).substr(0, 58), "TamTest: Missing parameter - syntax for Recv_Image(ri) is:");
    EXPECT_EQ(scannerlink::state.nextTag, 5u);
}

TEST_F(ImageTransfer, RecvOfAFileThatCannotBeUsedNamesIt) {
    EXPECT_EQ(type("ri none.tif 1 2 3"), "TamTest: can't open TIFF file none.tif\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ImageTransfer, RecvOfAFileWhoseByteCountIsNotItsSizeIsRefused) {
    fakeTiff().files["in.tif"] = makeTiff(5, 2);
    fakeTiff().byteCountError = -1;
    EXPECT_EQ(type("ri in.tif 1 2 3"), "TamTest: can't open TIFF file in.tif\n");
}

TEST_F(ImageTransfer, RecvThatIsNotCompletedIsTold) {
    fakeTiff().files["in.tif"] = makeTiff(5, 2);
    completes = false;
    EXPECT_EQ(type("ri in.tif 1 2 3"), "TamTest: didn't get rcv_image cmd complete status\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
}

TEST_F(ImageTransfer, FailedPutIsToldAndFlagged) {
    fakeTiff().files["in.tif"] = makeTiff(5, 2);
    rule = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9051; };
    EXPECT_EQ(type("ri in.tif 1 2 3"), "TamTest: failed in HoxiPutImage - 9051\n");
    EXPECT_EQ(console::state.errorFlag, 9051u);
}

}  // namespace
}  // namespace operations
