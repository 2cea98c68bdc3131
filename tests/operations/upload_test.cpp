#include "operations/upload.h"

#include <cstring>

#include "console/console_state.h"
#include "link/link_state.h"
#include "operations/upload_buffer.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
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
using support::wordBytes;

using Names = std::vector<std::string>;

const char kLoaded[] = " UPGRADE SUCCESSFULLY LOADED\n";
const char kDoNotUnplug[] =
    "\nThis command may take over 5 minutes to complete,\n\tplease do not unplug/disconnect the unit.\n\n";

class Upload : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakeHoxi().dataBufSize = 4096;
        startLink();
        fakeHoxi().onPutCommand = [this](uint32_t, const std::vector<uint8_t>& packet) {
            uint32_t words[2];
            std::memcpy(words, packet.data(), sizeof words);
            if (words[0] == 5 && !model.empty()) {
                scannerlink::Report version = makeReport(4, 3, words[1]);
                support::setBytes(version, 28, model);
                deliver(version);
            }
            if (words[0] != 5 && confirms)
                deliver(makeReport(27, 3, words[1], {1}));
            if (words[0] == 5 ? versionCompletes : completes)
                deliverAt(fakePlatform().nowMs + 10, makeReport(133, 3, words[1]));
            return refusal;
        };
    }

    std::string file(const std::string& name, const std::string& bytes) {
        support::writeFile(folder.file(name), bytes);
        return folder.file(name);
    }

    // Types a line with reports hidden; what they look like is shown elsewhere.
    static std::string typeQuietly(const std::string& line) {
        scannerlink::state.quiet = 1;
        const std::string text = type(line);
        scannerlink::state.quiet = 0;
        return text;
    }

    static std::string bytesPut() {
        std::string bytes;
        for (const HoxiCall& call : fakeHoxi().calls)
            if (call.name == "PutMemory")
                bytes.append(call.bytes.begin(), call.bytes.end());
        return bytes;
    }

    bool confirms = true;
    bool completes = true;
    bool versionCompletes = true;
    uint32_t refusal = 0;
    std::string model = "MX1100";
    support::TemporaryFolder folder;
};

struct UploadCase {
    const char* operation;
    uint32_t code;
    const char* extension;
};

class EveryUpload : public Upload, public ::testing::WithParamInterface<UploadCase> {};

TEST_P(EveryUpload, SendsItsCodeWithTheFilesLength) {
    const UploadCase& upload = GetParam();
    const std::string name = file(std::string("x") + upload.extension, "12345678");
    EXPECT_EQ(typeQuietly(std::string(upload.operation) + " " + name), kLoaded);
    EXPECT_EQ(support::packetsPut().at(0), wordBytes({upload.code, 1, 0, 8}));
    EXPECT_EQ(bytesPut(), "12345678");
}

TEST_P(EveryUpload, UsesUpATagWithoutAFileName) {
    const std::string text = type(GetParam().operation);
    EXPECT_EQ(text.substr(0, 40), "TamTest: Missing parameter - syntax for ") << text;
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_P(EveryUpload, RefusesAnotherExtensionAndUsesUpATag) {
    const UploadCase& upload = GetParam();
    if (*upload.extension == '\0')
        return;
    EXPECT_EQ(type(std::string(upload.operation) + " x.other"),
              std::string("TamTest: invalid file extension, must be ") + upload.extension + "\n");
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

INSTANTIATE_TEST_SUITE_P(Operations, EveryUpload,
                         ::testing::Values(UploadCase{"rpcip", 21, ".rbf"}, UploadCase{"ripp", 22, ".rbf"},
                                           UploadCase{"rtfw", 23, ".hex"}, UploadCase{"rtfp", 24, ".xsvf"},
                                           UploadCase{"rcnt", 25, ""}, UploadCase{"rken", 26, ".knl"},
                                           UploadCase{"rram", 27, ".ram"}, UploadCase{"rbot", 28, ".ubt"},
                                           UploadCase{"rjfs", 29, ".jfs"}, UploadCase{"rbken", 140, ".knl"},
                                           UploadCase{"rbram", 141, ".ram"}, UploadCase{"rguii", 142, ".img"},
                                           UploadCase{"rodb", 143, ".bin"}, UploadCase{"rubl", 144, ".ubl"}));

TEST_F(Upload, ExtensionAloneIsNoName) {
    EXPECT_EQ(type("rpcip .rbf"), "TamTest: invalid file extension, must be .rbf\n");
    EXPECT_EQ(type("rpcip x.RBF.bak"), "TamTest: invalid file extension, must be .rbf\n");
    EXPECT_EQ(type("rtfp .xsvf"), "TamTest: invalid file extension, must be .xsvf\n");
}

TEST_F(Upload, SixCharactersAreEnoughForTheLongExtension) {
    EXPECT_EQ(type("rtfp x.xsvf"), "TamTest: failed reading coff/program data from x.xsvf\n");
}

TEST_F(Upload, FiveBytesAreTwoWordsPaddedWithZeros) {
    std::memset(uploadBuffer().data(), 0xEE, 16);
    EXPECT_EQ(typeQuietly("rcnt " + file("table", "12345")), kLoaded);
    EXPECT_EQ(support::packetsPut().at(0), wordBytes({25, 1, 0, 8}));
    EXPECT_EQ(bytesPut(), std::string("12345\0\0\0", 8));
}

TEST_F(Upload, FourBytesAreRefused) {
    const std::string name = file("table", "1234");
    EXPECT_EQ(type("rcnt " + name), "TamTest: failed reading coff/program data from " + name + "\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(Upload, MissingEmptyAndFolderAreRefused) {
    for (const std::string& name : {folder.file("none"), file("empty", ""), folder.path().string()})
        EXPECT_EQ(type("rcnt " + name), "TamTest: failed reading coff/program data from " + name + "\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(Upload, TravelsInBlocks) {
    typeQuietly("rcnt " + file("table", std::string(9000, 'x')));
    ASSERT_EQ(callNames(), (Names{"PutCommand", "PutMemory", "PutMemory", "PutMemory"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 4096, 1}));
    EXPECT_EQ(fakeHoxi().calls[3].numbers, (std::vector<uint64_t>{0, 808, 2}));
}

TEST_F(Upload, FileLongerThanTheBufferIsCut) {
    const std::string name = file("huge", "");
    std::filesystem::resize_file(name, kUploadBufferSize + 5);
    fakeHoxi().dataBufSize = kUploadBufferSize;
    startLink();
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 1; };
    typeQuietly("rcnt " + name);
    EXPECT_EQ(support::packetsPut().at(0), wordBytes({25, 1, 0, 0x8000000}));
}

TEST_F(Upload, WithoutConfirmationSendsNothing) {
    confirms = false;
    EXPECT_EQ(typeQuietly("rcnt " + file("table", "12345")), "TamTest: didn't get recv_progCoff confirmation status\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
    EXPECT_GE(fakePlatform().nowMs, 180000u);
    EXPECT_LT(fakePlatform().nowMs, 181000u);
}

TEST_F(Upload, FailedPutIsToldAndFlagged) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9050; };
    EXPECT_EQ(typeQuietly("rcnt " + file("table", "12345")), "TamTest: failed in HoxiPutMemmory\n");
    EXPECT_EQ(console::state.errorFlag, 9050u);
}

TEST_F(Upload, ThatIsNotRecordedIsToldAfterSixMinutes) {
    completes = false;
    EXPECT_EQ(typeQuietly("rcnt " + file("table", "12345")), "TamTest: didn't get recv_progCoff cmd complete status\n");
    EXPECT_GE(fakePlatform().nowMs, 360000u);
    EXPECT_LT(fakePlatform().nowMs, 361000u);
}

TEST_F(Upload, SuccessStaysOutOfTheLog) {
    type("blog " + folder.file("log"));
    typeQuietly("rcnt " + file("table", "12345"));
    EXPECT_EQ(support::readFile(folder.file("log")), "");
    type("elog");
}

TEST_F(Upload, RefusedCommandEndsIt) {
    refusal = 9020;
    EXPECT_EQ(type("rcnt " + file("table", "12345")), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
}

TEST_F(Upload, ScannerCodeAsksForTheVersionQuietlyAndThenIsSent) {
    const std::string text = type("rcof " + file("MX-1100.DSP.1.23.ovk", "12345678"));
    EXPECT_EQ(text.substr(0, sizeof kDoNotUnplug - 1), kDoNotUnplug);
    EXPECT_NE(text.find("command: code=20, tag=2, size=0"), std::string::npos) << text;
    EXPECT_EQ(text.find("code=5"), std::string::npos) << text;
    EXPECT_EQ(support::packetsPut(),
              (std::vector<std::vector<uint8_t>>{wordBytes({5, 1, 0}), wordBytes({20, 2, 0, 8})}));
    EXPECT_EQ(scannerlink::state.quiet, 0);
}

TEST_F(Upload, ScannerCodeOfTheModelInLowerCasePassesInAnyFolderAndCase) {
    model = "mx1100";
    EXPECT_EQ(type("rcof " + file("mx-1100.dsp.1.23.OVK", "12345678")).substr(0, sizeof kDoNotUnplug - 1),
              kDoNotUnplug);
}

TEST_F(Upload, ScannerCodeWithAShorterNameFailsWithBothMessages) {
    EXPECT_EQ(type("rcof MX-1100.DSP.1.2.ovk"),
              "TamTest: invalid firmware file for this scanner\n"
              "TamTest: should be in form MX-1100.dsp.x.xx.ovk\n");
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(Upload, ScannerCodeOfAnyNamePassesForAModelThatIsNotKnown) {
    model = "other";
    EXPECT_EQ(type("rcof x.ovk").substr(0, sizeof kDoNotUnplug - 1), kDoNotUnplug);
}

TEST_F(Upload, ScannerCodeWithAnotherExtensionTakesNoTag) {
    EXPECT_EQ(type("rcof x.rbf"), "TamTest: invalid file extension, must be .ovk\n");
    EXPECT_EQ(type("rcof .ovk"), "TamTest: invalid file extension, must be .ovk\n");
    EXPECT_EQ(scannerlink::state.nextTag, 1u);
}

TEST_F(Upload, ScannerCodeWithoutVersionCompletionLeavesTheTesterQuiet) {
    versionCompletes = false;
    EXPECT_EQ(type("rcof MX-1100.DSP.1.23.ovk"), "TamTest: didn't get CMD_SEND_VERS cmd complete status\n");
    EXPECT_EQ(scannerlink::state.quiet, 1);
    EXPECT_EQ(fakePlatform().nowMs, 30010u);
}

TEST_F(Upload, ScannerCodeWithoutAFileNameTakesNoTag) {
    EXPECT_EQ(type("rcof").substr(0, 60), "TamTest: Missing parameter - syntax for Recv_COFf(rcof) is:\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 1u);
}

TEST_F(Upload, ScannerCodeWhoseVersionRequestIsRefusedEndsAndIsHeardAgain) {
    refusal = 9020;
    EXPECT_EQ(type("rcof MX-1100.DSP.1.23.ovk"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
    EXPECT_EQ(scannerlink::state.quiet, 0);
}

TEST_F(Upload, ScannerCodeOfFourBytesIsRefusedBehindTheWarning) {
    const std::string name = file("MX-1100.dsp.1.23.ovk", "1234");
    EXPECT_EQ(type("rcof " + name), kDoNotUnplug + ("TamTest: failed reading coff/program data from " + name + "\n"));
    EXPECT_EQ(support::packetsPut().size(), 1u);
    EXPECT_EQ(scannerlink::state.nextTag, 3u);
}

TEST_F(Upload, ScannerCodeOfAnotherModelIsToldTheFormOfItsName) {
    const std::pair<const char*, const char*> models[] = {
        {"MX1200", "MX-1500.dsp.x.xx.ovk"},
        {"MX1300", "MX-1500.dsp.x.xx.ovk"},
        {"MXRB-2", "Tamsel.x.xx.ovk"},
        {"MX1400", "Tamsel.x.xx.ovk"},
    };
    for (const auto& [name, form] : models) {
        model = name;
        EXPECT_EQ(
            type("rcof MX-1100.DSP.1.23.ovk"),
            std::string("TamTest: invalid firmware file for this scanner\nTamTest: should be in form ") + form + "\n")
            << name;
    }
}

TEST_F(Upload, ScannerCodeMustSuitTheModelOfTheCurrentScannerNotTheLastHeardFrom) {
    startLink(2);
    model.clear();
    for (const uint32_t scanner : {0u, 1u}) {
        scannerlink::Report version = makeReport(4, 3, 1);
        support::setBytes(version, 28, scanner == 0 ? "MX1100" : "MX1400");
        deliver(version, scanner);
    }
    const std::string text = type("rcof MX-1100.DSP.1.23.ovk");
    EXPECT_EQ(text.substr(0, sizeof kDoNotUnplug - 1), kDoNotUnplug) << text;
}

}  // namespace
}  // namespace operations
