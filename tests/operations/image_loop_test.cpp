// The loop test of the image channel: an image is given once and read back again and again.

#include <algorithm>

#include "console/console_state.h"
#include "image_transfer_test.h"
#include "operations/image_transfer.h"
#include "support/fake_tiff.h"

namespace operations {
namespace {

using support::fakeTiff;
using support::makeTiff;
using support::packetsPut;

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
