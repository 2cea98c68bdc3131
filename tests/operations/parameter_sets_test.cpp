#include "operations/parameter_sets.h"

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

// A scanner that confirms every parameter command and completes it, unless the test says otherwise.
class ParameterSets : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakeHoxi().dataBufSize = 16;
        startLink();
        scannerlink::state.quiet = 1;
        fakeHoxi().onPutCommand = [this](uint32_t, const std::vector<uint8_t>& packet) {
            uint32_t tag = 0;
            std::memcpy(&tag, packet.data() + 4, sizeof tag);
            if (confirms)
                deliver(makeReport(27, 3, tag, {confirmation}));
            if (completes)
                deliverAt(fakePlatform().nowMs + 10, makeReport(133, 3, tag));
            return refusal;
        };
    }

    static std::vector<uint8_t> packet(size_t index = 0) { return support::packetsPut().at(index); }

    static std::vector<uint8_t> bytesPut() {
        std::vector<uint8_t> bytes;
        for (const HoxiCall& call : fakeHoxi().calls)
            if (call.name == "PutMemory")
                bytes.insert(bytes.end(), call.bytes.begin(), call.bytes.end());
        return bytes;
    }

    std::string file(const std::string& bytes) {
        support::writeFile(folder.file("set"), bytes);
        return folder.file("set");
    }

    static std::string textOf(const std::vector<uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

    bool confirms = true;
    bool completes = true;
    uint32_t confirmation = 1;
    uint32_t refusal = 0;
    support::TemporaryFolder folder;
};

TEST_F(ParameterSets, SetOfOneValueSendsSetAndLengthThenTheValue) {
    EXPECT_EQ(type("sp 13 0x1234"), "");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 13, 4}));
    EXPECT_EQ(bytesPut(), wordBytes({0x1234}));
    EXPECT_EQ(callNames(), (Names{"PutCommand", "PutMemory"}));
}

TEST_F(ParameterSets, TwoValuesForASetOfOneAreRefused) {
    EXPECT_EQ(type("sp 13 1 2"), "TamTest: invalid number of parameters\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(ParameterSets, Set44IsToldInvalidAndSentAllTheSame) {
    EXPECT_EQ(type("sp 44 1 2"), "TamTest: invalid parameter set\n");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 44, 8}));
    EXPECT_EQ(bytesPut(), wordBytes({1, 2}));
}

TEST_F(ParameterSets, Set200IsToldInvalidAndSentAllTheSame) {
    EXPECT_EQ(type("Set_Parameters 200 5"), "TamTest: invalid parameter set\n");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 200, 4}));
}

TEST_F(ParameterSets, ValuesTravelInBlocksOfTheScanner) {
    type("sp 5 1 2 3 4 5");
    ASSERT_EQ(callNames(), (Names{"PutCommand", "PutMemory", "PutMemory"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 16, 1}));
    EXPECT_EQ(fakeHoxi().calls[2].numbers, (std::vector<uint64_t>{0, 4, 2}));
}

TEST_F(ParameterSets, MissingSetOrValueTellsTheSyntaxAndUsesTheTag) {
    EXPECT_EQ(type("sp").substr(0, 63), "TamTest: Missing parameter - syntax for Set_Parameters(sp) is:\n");
    const std::string text = type("sp 13");
    EXPECT_EQ(text.substr(0, 38), "TamTest: invalid number of parameters\n");
    EXPECT_NE(text.find("TamTest: Missing parameter - syntax for Set_Parameters(sp) is:\n"), std::string::npos);
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 3u);
}

TEST_F(ParameterSets, Set44WithoutValuesSendsNothing) {
    const std::string text = type("sp 44");
    EXPECT_EQ(text.substr(0, 31), "TamTest: invalid parameter set\n");
    EXPECT_NE(text.find("TamTest: Missing parameter - syntax for Set_Parameters(sp) is:\n"), std::string::npos);
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(ParameterSets, IdentitySetTakesThreeTexts) {
    EXPECT_EQ(type("sp 0 Tamsel MX1100 serial 1 2 3 4"), "");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 0, 56}));
    const std::string sent = textOf(bytesPut());
    EXPECT_EQ(sent.substr(0, 40), std::string("Tamsel\0\0MX1100\0\0\0\0\0\0\0\0\0\0serial\0\0\0\0\0\0\0\0\0\0", 40));
    EXPECT_EQ(sent.substr(40), textOf(wordBytes({1, 2, 3, 4})));
}

TEST_F(ParameterSets, IdentityTextThatIsTooLongIsRefusedByTheCount) {
    EXPECT_EQ(type("sp 0 Tamsel88 x y 1 2 3 4"), "TamTest: invalid number of parameters\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ParameterSets, AsciiFileInLowerCaseIsReadAsText) {
    EXPECT_EQ(type("sp " + file("ascii\n5 1 ; set 5\n;\n2 3\n4 5")), "");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 5, 20}));
    EXPECT_EQ(bytesPut(), wordBytes({1, 2, 3, 4, 5}));
}

TEST_F(ParameterSets, AsciiFileOfTheIdentitySetCutsItsTexts) {
    EXPECT_EQ(type("sp " + file("ASCII\n0 Tamsel-long MX1100 serial 1 2 3 4\n")), "");
    EXPECT_EQ(textOf(bytesPut()).substr(0, 8), std::string("Tamsel-\0", 8));
}

TEST_F(ParameterSets, OtherFileIsReadAsBinaryFromItsFirstByte) {
    EXPECT_EQ(type("sp " + file(textOf(wordBytes({8, 0xAABBCCDD, 0x11223344})) + "xyz")), "");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 8, 8}));
    EXPECT_EQ(bytesPut(), wordBytes({0xAABBCCDD, 0x11223344}));
}

TEST_F(ParameterSets, FileThatNamesASetThatIsNotThereIsSentAllTheSame) {
    for (const char* set : {"44", "200"}) {
        fakeHoxi().calls.clear();
        EXPECT_EQ(type("sp " + file(std::string("ASCII\n") + set + " 7\n")), "TamTest: invalid parameter set\n");
        EXPECT_EQ(bytesPut(), wordBytes({7}));
    }
}

TEST_F(ParameterSets, FilesWithFewerThanTwoWordsFail) {
    for (const char* bytes : {"", "ASCII", "ASCII\n13\n", "ASCII\n;13 5\n", "abcdefg"}) {
        const std::string name = file(bytes);
        EXPECT_EQ(type("sp " + name), "TamTest: failed reading parameters from " + name + "\n") << bytes;
    }
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ParameterSets, FileThatIsMissingOrAFolderFails) {
    EXPECT_EQ(type("sp nosuch"), "TamTest: failed reading parameters from nosuch\n");
    EXPECT_EQ(type("sp " + folder.path().string()),
              "TamTest: failed reading parameters from " + folder.path().string() + "\n");
}

TEST_F(ParameterSets, SetWithoutConfirmationSendsNoValues) {
    confirms = completes = false;
    EXPECT_EQ(type("sp 13 5"), "TamTest: didn't get set_parm confirmation status\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
    EXPECT_EQ(fakePlatform().nowMs, 30010u);
    EXPECT_FALSE(console::errorFlagged());
}

TEST_F(ParameterSets, AnotherConfirmationValueIsNone) {
    confirmation = 2;
    EXPECT_EQ(type("sp 13 5"), "TamTest: didn't get set_parm confirmation status\n");
}

TEST_F(ParameterSets, FailedPutIsToldAndFlagged) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9050; };
    EXPECT_EQ(type("sp 13 5"), "TamTest: failed in HoxiPutMemmory\n");
    EXPECT_EQ(console::state.errorFlag, 9050u);
}

TEST_F(ParameterSets, SetThatIsNotCompletedIsTold) {
    completes = false;
    EXPECT_EQ(type("sp 13 5"), "TamTest: didn't get set_parm cmd complete status\n");
    EXPECT_EQ(fakePlatform().nowMs, 30010u);
}

TEST_F(ParameterSets, RefusedCommandEndsTheOperation) {
    refusal = 9020;
    EXPECT_EQ(type("sp 13 5"), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
}

TEST_F(ParameterSets, GetShowsTheValuesInTheGivenFormat) {
    fakeHoxi().toGive = wordBytes({16, 255});
    EXPECT_EQ(type("gp 1 0x%02x"), "\n0x10 0xff\n");
    EXPECT_EQ(packet(), wordBytes({91, 1, 8, 1, 8}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 8}));
}

TEST_F(ParameterSets, GetMovesInBlocksOfTheScanner) {
    fakeHoxi().toGive = wordBytes({1, 2, 3, 4, 5});
    EXPECT_EQ(type("gp 5"), "\n1 2 3 4 5\n");
    ASSERT_EQ(callNames(), (Names{"PutCommand", "GetMemory", "GetMemory"}));
    EXPECT_EQ(fakeHoxi().calls[1].numbers, (std::vector<uint64_t>{0, 16}));
    EXPECT_EQ(fakeHoxi().calls[2].numbers, (std::vector<uint64_t>{0, 4}));
}

TEST_F(ParameterSets, GetOfTheIdentitySetShowsItsTexts) {
    fakeHoxi().dataBufSize = 64;
    startLink();
    fakeHoxi().toGive = wordBytes({0x006D6154, 0, 0x0031584D, 0, 0, 0, 0x00312D53, 0, 0, 0, 2024, 3, 15, 500});
    EXPECT_EQ(type("gp 0"), "\nTam MX1 S-1\n 2024 3 15 500\n");
}

TEST_F(ParameterSets, GetOfSet75ShowsTriplesWhateverTheFormat) {
    fakeHoxi().dataBufSize = 200;
    startLink();
    std::vector<uint32_t> words(31);
    std::string expected = "\n0";
    for (uint32_t i = 1; i < words.size(); ++i) {
        words[i] = i;
        expected += (i % 3 == 1 ? "\n" : "") + std::to_string(i) + " ";
    }
    fakeHoxi().toGive = wordBytes(words);
    EXPECT_EQ(type("gp 75 %x"), expected + "\n");
}

TEST_F(ParameterSets, CharacterZeroPrintsNothing) {
    fakeHoxi().toGive = wordBytes({'A', 0});
    EXPECT_EQ(type("gp 1 <%c>"), "\n<A> <>\n");
}

TEST_F(ParameterSets, OperationsTellTheirSyntaxWithoutTheirSetAndUseTheTag) {
    EXPECT_EQ(type("gp").substr(0, 63), "TamTest: Missing parameter - syntax for Get_Parameters(gp) is:\n");
    EXPECT_EQ(type("gdp").substr(0, 68), "TamTest: Missing parameter - syntax for Get_Def_Parameters(gdp) is:\n");
    EXPECT_EQ(type("cp").substr(0, 65), "TamTest: Missing parameter - syntax for Check_Parameters(cp) is:\n");
    EXPECT_NE(type("scp").find("TamTest: Missing parameter - syntax for Set_Camera_Parameters(scp) is:\n"),
              std::string::npos);
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 5u);
}

TEST_F(ParameterSets, RefusedCommandsEndTheOtherOperationsAsWell) {
    refusal = 9020;
    fakePlatform().input = "YES\n";
    for (const char* line : {"gp 1", "gdp 1", "gcp", "cp 1"})
        EXPECT_EQ(type(line), "TamTest: Failure in HoxiPutCommand - 9020\n") << line;
    EXPECT_NE(type("svp").find("TamTest: Failure in HoxiPutCommand - 9020\n"), std::string::npos);
    EXPECT_EQ(callNames(), Names(5, "PutCommand"));
}

TEST_F(ParameterSets, GetWithAnotherConfirmationValueFetchesNothing) {
    confirmation = 2;
    EXPECT_EQ(type("gp 1"), "TamTest: didn't get get_parm confirmation status\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
}

TEST_F(ParameterSets, GetThatEndsInAFailureIsToldAtOnce) {
    completes = false;
    fakeHoxi().toGive = wordBytes({7});
    deliverAt(50, makeReport(133, 6, 1));
    EXPECT_EQ(type("gp 13"), "\n7\nTamTest: didn't get get_parm cmd complete status\n");
    EXPECT_EQ(fakePlatform().nowMs, 50u);
}

TEST_F(ParameterSets, GetShowsDecimalsWithoutAFormat) {
    fakeHoxi().toGive = wordBytes({16, 0xFFFFFFFF});
    EXPECT_EQ(type("Get_Parameters 1"), "\n16 -1\n");
}

TEST_F(ParameterSets, DefaultsAreGotUnderTheirOwnCode) {
    fakeHoxi().toGive = wordBytes({7});
    EXPECT_EQ(type("gdp 13"), "\n7\n");
    EXPECT_EQ(packet(), wordBytes({96, 1, 8, 13, 4}));
}

TEST_F(ParameterSets, LargeSetShows160ItemsAndCountsTheRest) {
    fakeHoxi().toGive.assign(131072, 0);
    const std::string text = type("gp 6");
    const std::string end = " 0\n>>> remaining 32608 items skipped\n";
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(ParameterSets, GetOfAnInvalidSetSendsNothingYetUsesTheTag) {
    EXPECT_EQ(type("gp 44"), "TamTest: invalid parameter set\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(ParameterSets, FormatThatIsNoneForANumberIsRefusedBeforeAnythingIsSent) {
    EXPECT_EQ(type("gp 1 %s"), "TamTest: invalid format - %s\n");
    EXPECT_EQ(type("gdp 1 %d%n"), "TamTest: invalid format - %d%n\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ParameterSets, LastBlockThatComesEarlyEndsTheGetting) {
    fakeHoxi().toGive = wordBytes({1, 2, 3, 4});
    EXPECT_EQ(type("gp 5"), "\n1 2 3 4 0\n");
}

TEST_F(ParameterSets, GetWithoutConfirmationFetchesNothing) {
    confirms = completes = false;
    EXPECT_EQ(type("gp 1"), "TamTest: didn't get get_parm confirmation status\n");
    EXPECT_EQ(callNames(), Names{"PutCommand"});
    EXPECT_EQ(fakePlatform().nowMs, 30010u);
    EXPECT_FALSE(console::errorFlagged());
}

TEST_F(ParameterSets, FailedGetIsToldAndFlagged) {
    fakeHoxi().onTransfer = [](const std::string&, FakeHoxi::Channel& call) { call.result = 9051; };
    EXPECT_EQ(type("gp 1"), "TamTest: failed in HoxiGetMemmory\n");
    EXPECT_EQ(console::state.errorFlag, 9051u);
}

TEST_F(ParameterSets, GetThatIsNotCompletedIsToldBehindTheValues) {
    completes = false;
    fakeHoxi().toGive = wordBytes({7});
    EXPECT_EQ(type("gp 13"), "\n7\nTamTest: didn't get get_parm cmd complete status\n");
    EXPECT_EQ(fakePlatform().nowMs, 30010u);
}

TEST_F(ParameterSets, CameraParametersAreSet63) {
    EXPECT_EQ(type("scp 1 2 3 4 5 6 7 8 9 10"), "");
    EXPECT_EQ(packet(), wordBytes({90, 1, 8, 63, 40}));
    EXPECT_EQ(bytesPut(), wordBytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    fakeHoxi().toGive = wordBytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    EXPECT_EQ(type("gcp"), "\n1 2 3 4 5 6 7 8\n9 10\n");
    EXPECT_EQ(packet(1), wordBytes({91, 2, 8, 63, 40}));
}

TEST_F(ParameterSets, NineCameraParametersAreRefused) {
    EXPECT_EQ(type("scp 1 2 3 4 5 6 7 8 9"), "TamTest: invalid number of parameters\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(ParameterSets, CheckSendsTheLengthAndAwaitsNothing) {
    confirms = completes = false;
    EXPECT_EQ(type("cp 5"), "");
    EXPECT_EQ(packet(), wordBytes({94, 1, 8, 5, 20}));
    EXPECT_EQ(type("cp 44"), "TamTest: invalid parameter set\n");
    EXPECT_EQ(packet(1), wordBytes({94, 2, 8, 44, 0}));
    EXPECT_EQ(fakePlatform().nowMs, 0u);
}

const char kQuestion[] = "Are you certain you want to overwrite non-volatile storage?  ";

TEST_F(ParameterSets, SaveIsAcceptedByYesInAnyCase) {
    for (const char* reply : {"YES\n", "yes\n", "yEs\r\n", "yes"}) {
        fakeHoxi().calls.clear();
        fakePlatform().input = reply;
        EXPECT_EQ(type("svp"), kQuestion);
        EXPECT_EQ(support::packetsPut().size(), 1u) << reply;
    }
    EXPECT_EQ(packet(), wordBytes({92, 4, 0}));
}

TEST_F(ParameterSets, SaveIsCanceledByAnythingElseAndTakesNoTag) {
    for (const char* reply : {"YES \n", "Y\n", " YES\n", "\n", "", "YESS\n", "no\n"}) {
        fakePlatform().input = reply;
        EXPECT_EQ(type("SaVe_Parameters"), std::string(kQuestion) + "...Canceled save parameters command.\n") << reply;
    }
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 1u);
}

TEST_F(ParameterSets, SaveQuestionStaysOutOfTheLog) {
    type("blog " + folder.file("log"));
    fakePlatform().input = "no\n";
    type("svp");
    EXPECT_EQ(support::readFile(folder.file("log")), "");
    type("elog");
}

}  // namespace
}  // namespace operations
