#include "operations/image_transfer.h"

#include <algorithm>
#include <cstring>

#include "console/console_state.h"
#include "link/link_state.h"
#include "link/status_check.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/fake_tiff.h"
#include "support/tester_test.h"

namespace operations {
namespace {

using support::callNames;
using support::FakeHoxi;
using support::fakeHoxi;
using support::fakePlatform;
using support::fakeTiff;
using support::HoxiCall;
using support::makeReport;
using support::makeTiff;
using support::packetsPut;
using support::wordBytes;

using Bytes = std::vector<uint8_t>;
using Names = std::vector<std::string>;

// A scanner that completes every command and confirms transfers, unless the test says otherwise.
class ImageTransfer : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakeHoxi().dataBufSize = 4;
        startLink();
        scannerlink::state.quiet = 1;
        fakeHoxi().onPutCommand = [this](uint32_t scanner, const Bytes& packet) {
            uint32_t words[2];
            std::memcpy(words, packet.data(), sizeof words);
            if (completes)
                deliver(makeReport(133, 3, words[1]), scanner);
            if (words[0] == 10)
                answerSend(words[1], scanner);
            return refusal;
        };
        fakeHoxi().onTransfer = [this](const std::string& name, FakeHoxi::Channel& call) {
            if (name == "GetImage" && done && fakeHoxi().given + call.moved == fakeHoxi().toGive.size())
                deliverAt(fakePlatform().nowMs + 30, makeReport(26, 3, lastTag, {5}), lastScanner);
            if (rule)
                rule(name, call);
        };
    }

    void answerSend(uint32_t tag, uint32_t scanner) {
        lastTag = tag;
        lastScanner = scanner;
        fakeHoxi().given = 0;
        if (ready)
            deliverAt(fakePlatform().nowMs + 10, makeReport(26, 3, tag, {1}), scanner);
    }

    // The image information that the scanner has reported: image 5 of scan 6 and type 7. The pitch is not the width's.
    static void reportInfo(uint32_t height, uint32_t width, uint32_t scanner = 0) {
        deliver(makeReport(52, 3, 1, {5, 6, 7, height, width, width + 3, 12, 500, 501}), scanner);
        scannerlink::checkStatus();
    }

    // How long a line took, in milliseconds.
    static uint64_t durationOf(const std::string& line) {
        const uint64_t start = fakePlatform().nowMs;
        type(line);
        return fakePlatform().nowMs - start;
    }

    static Bytes counting(size_t count) {
        Bytes bytes(count);
        for (size_t i = 0; i < count; ++i)
            bytes[i] = static_cast<uint8_t>(i + 1);
        return bytes;
    }

    static Bytes packet64(std::vector<uint32_t> words) {
        words.resize(16, 0);
        return wordBytes(words);
    }

    static Bytes put() {
        Bytes bytes;
        for (const HoxiCall& call : fakeHoxi().calls)
            if (call.name == "PutImage")
                bytes.insert(bytes.end(), call.bytes.begin(), call.bytes.end());
        return bytes;
    }

    bool completes = true;
    bool ready = true;
    bool done = true;
    uint32_t refusal = 0;
    uint32_t lastTag = 0;
    uint32_t lastScanner = 0;
    std::function<void(const std::string&, FakeHoxi::Channel&)> rule;
};

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

class LoopTest : public ImageTransfer {
protected:
    void SetUp() override {
        ImageTransfer::SetUp();
        fakeTiff().files["in.tif"] = makeTiff(4, 2);
        fakeHoxi().toGive = fakeTiff().files["in.tif"].pixels;
        ready = done = false;  // nobody waits for them here
    }

    static size_t passes() {
        const auto packets = packetsPut();
        return std::count_if(packets.begin(), packets.end(), [](const Bytes& packet) { return packet[0] == 10; });
    }
};

TEST_F(LoopTest, GivesTheImageOnceAndReadsItBackWithNewTags) {
    EXPECT_EQ(type("silt in.tif out.tif 2"), "");
    EXPECT_EQ(packetsPut(),
              (std::vector<Bytes>{packet64({11, 1, 36, 1001, 1, 1, 2, 4, 4, 501, 500, 8}),
                                  packet64({10, 2, 16, 1001, 1, 1, 8}), packet64({10, 3, 16, 1001, 1, 1, 8})}));
    EXPECT_EQ(fakeTiff().files.count("out.tif"), 0u);
}

TEST_F(LoopTest, CountOfZeroOrOneMakesOnePass) {
    type("silt in.tif out.tif 0");
    EXPECT_EQ(passes(), 1u);
    type("silt in.tif out.tif 1");
    EXPECT_EQ(passes(), 2u);
}

TEST_F(LoopTest, NeedsThreeArgumentsAndTakesNoTagBefore) {
    for (const char* line : {"silt", "silt in.tif", "silt in.tif out.tif"})
        EXPECT_EQ(type(line).substr(0, 70), "TamTest: Missing parameter - syntax for Send_Image_Loop_Test(silt) is:");
    EXPECT_EQ(type("silt none.tif out.tif 1"), "TamTest: can't open TIFF file none.tif\n");
    EXPECT_EQ(scannerlink::state.nextTag, 1u);
}

TEST_F(LoopTest, DifferenceInTheFirstPassReportsNoLoopsAndWritesTheCopy) {
    fakeHoxi().toGive[3] = 99;
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: read back image differs from original, 0 loops\n");
    EXPECT_EQ(console::state.errorFlag, 9000u);
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, fakeHoxi().toGive);
    EXPECT_EQ(passes(), 1u);
}

TEST_F(LoopTest, DifferenceInALaterPassReportsTheGoodOnes) {
    rule = [this](const std::string& name, FakeHoxi::Channel&) {
        if (name == "GetImage" && passes() == 3)
            fakeHoxi().toGive[0] = 99;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: read back image differs from original, 2 loops\n");
}

TEST_F(LoopTest, GoesOnBehindAFailedCallAndWritesTheCopy) {
    rule = [](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "GetImage" && fakeHoxi().given == 0)
            call.result = 9050;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: failed in HoxiGetImage - 9050\n");
    EXPECT_EQ(console::state.errorFlag, 9050u);
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, fakeHoxi().toGive);
    EXPECT_EQ(passes(), 1u);
}

TEST_F(LoopTest, AsksAgainAfterAFailedCallThatMovedNothing) {
    int calls = 0;
    rule = [&calls](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "GetImage" && ++calls <= 2)
            call = {9050, 0, 0};
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"),
              "TamTest: failed in HoxiGetImage - 9050\nTamTest: failed in HoxiGetImage - 9050\n");
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, fakeHoxi().toGive);
}

TEST_F(LoopTest, EndsAtTheThirdFailedCallInARowThatMovesNothing) {
    rule = [](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "GetImage")
            call = {9050, 0, 0};
    };
    std::string thrice;
    for (int i = 0; i < 3; ++i)
        thrice += "TamTest: failed in HoxiGetImage - 9050\n";
    EXPECT_EQ(type("silt in.tif out.tif 5"), thrice);
    EXPECT_EQ(fakeTiff().files.at("out.tif").pixels, Bytes(8, 0));
}

TEST_F(LoopTest, EndsAtAFailedCallThatIsTheLast) {
    int calls = 0;
    rule = [&calls](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "GetImage") {
            ++calls;
            call.result = 9050;
            call.flags = 2;
        }
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"),
              "TamTest: failed in HoxiGetImage - 9050\nTamTest: got last xfer tag before image end\n");
    EXPECT_EQ(calls, 1);
}

TEST_F(LoopTest, EndsAtAFailedCallThatFillsTheImage) {
    int calls = 0;
    rule = [&calls](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "GetImage" && ++calls == 2)
            call.result = 9050;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: failed in HoxiGetImage - 9050\n");
    EXPECT_EQ(calls, 2);
}

TEST_F(LoopTest, MisplacedLastFlagEndsItAndWritesTheCopy) {
    rule = [](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "GetImage")
            call.flags = 2;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: got last xfer tag before image end\n");
    EXPECT_EQ(console::state.errorFlag, 9100u);
    EXPECT_EQ(fakeTiff().files.count("out.tif"), 1u);
}

TEST_F(LoopTest, WrittenCopyHasTheRecordOfTheFileWithItsTwoMarks) {
    fakeTiff().files["in.tif"].info.first = 7;
    fakeTiff().files["in.tif"].info.second = 8;
    fakeHoxi().toGive[3] = 99;
    type("silt in.tif out.tif 5");
    const TiffFileInfo& written = fakeTiff().files.at("out.tif").info;
    EXPECT_EQ(written.width, 4u);
    EXPECT_EQ(written.height, 2u);
    EXPECT_EQ(written.first, 1);
    EXPECT_EQ(written.second, 0);
}

TEST_F(LoopTest, FileThatCannotBeReadIsToldAndNothingIsSent) {
    fakeTiff().readResult = -2;
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: Error reading TIFF file\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(LoopTest, RefusedSendEndsIt) {
    rule = [this](const std::string& name, FakeHoxi::Channel&) {
        if (name == "PutImage")
            refusal = 9020;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(passes(), 1u);
    EXPECT_EQ(fakeTiff().files.count("out.tif"), 0u);
}

TEST_F(LoopTest, FailedPutEndsIt) {
    rule = [](const std::string& name, FakeHoxi::Channel& call) {
        if (name == "PutImage")
            call.result = 9051;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: failed in HoxiPutImage - 9051\n");
    EXPECT_EQ(passes(), 0u);
}

TEST_F(LoopTest, CommandsThatAreNotCompletedAreTold) {
    completes = false;
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: didn't get rcv_image cmd complete status\n");
    fakeHoxi().onPutCommand = [](uint32_t, const Bytes& packet) {
        if (packet[0] == 11)
            deliver(makeReport(133, 3, packet[4]));
        return 0u;
    };
    EXPECT_EQ(type("silt in.tif out.tif 5"), "TamTest: didn't get send_image cmd complete status\n");
}

}  // namespace
}  // namespace operations
