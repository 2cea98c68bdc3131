// Commands with rules of their own, and single cases of the others.
#include <algorithm>
#include <string>
#include <vector>

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/tester_test.h"

namespace operations {
namespace {

using support::fakeHoxi;
using support::packetsPut;
using support::wordBytes;

using Packets = std::vector<std::vector<uint8_t>>;

class CommandRules : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
    }

    // What the line sent.
    static Packets sent(const std::string& line) {
        fakeHoxi().calls.clear();
        type(line);
        return packetsPut();
    }

    static Packets words(const std::vector<uint32_t>& packet) { return {wordBytes(packet)}; }

    static bool saysMissing(const std::string& line) {
        return type(line).starts_with("TamTest: Missing parameter - syntax for ");
    }

    // Runs the line as one of a script that was given these parameters, and returns what was printed.
    static std::string typeInScript(const std::vector<std::string>& parameters, const std::string& line) {
        console::ScriptLevel& level = console::state.levels[1];
        level.parameters = {};
        std::copy(parameters.begin(), parameters.end(), level.parameters.begin());
        console::state.depth = 1;
        const std::string text = type(line);
        console::state.depth = 0;
        level.parameters = {};
        return text;
    }
};

TEST_F(CommandRules, SendVersSendsTwelveBytesAndAdvancesTheTagByOne) {
    EXPECT_EQ(type("Send_Vers"), "scanner 0 command: code=5, tag=1, size=0 - hoxirtn=0\n");
    EXPECT_EQ(packetsPut(), words({5, 1, 0}));
    EXPECT_EQ(scannerlink::state.nextTag, 2u);
}

TEST_F(CommandRules, FreeImageWithoutImageTypeSendsNothingYetUsesATag) {
    EXPECT_EQ(sent("fi 5 1 2"), words({12, 1, 12, 5, 1, 2}));
    EXPECT_EQ(sent("fi 5 1"), Packets{});
    EXPECT_EQ(sent("fi 5 1 2"), words({12, 3, 12, 5, 1, 2}));
}

TEST_F(CommandRules, HandCaptureStatesSizeZeroAndSendsItsPayload) {
    EXPECT_EQ(type("caph 7 8 9"), "scanner 0 command: code=71, tag=1, size=0 - hoxirtn=0\n");
    EXPECT_EQ(packetsPut(), words({71, 1, 0, 7, 8, 9}));
}

TEST_F(CommandRules, ANumberEndsAtTheFirstCharacterThatIsNoDigitOfIt) {
    EXPECT_EQ(sent("fi 12ab 0x1G 018"), words({12, 1, 12, 12, 1, 1}));
}

TEST_F(CommandRules, NegativeNumbersGoAsTheirTwosComplement) {
    EXPECT_EQ(sent("fi -1 -0x10 -2147483648"), words({12, 1, 12, 0xFFFFFFFF, 0xFFFFFFF0, 0x80000000}));
}

TEST_F(CommandRules, AScriptParameterThatIsNotThereIsAMissingArgument) {
    EXPECT_TRUE(typeInScript({"5", "6"}, "fi %1 %3 7").starts_with("TamTest: Missing parameter - "));
    EXPECT_EQ(packetsPut(), Packets{});
    typeInScript({"5", "6"}, "fi %2 %1 7");
    EXPECT_EQ(packetsPut(), words({12, 2, 12, 6, 5, 7}));
}

TEST_F(CommandRules, DisplayImageDefaultsToOneRepeatNormalQualityNoOffsetAndWhite255) {
    EXPECT_EQ(sent("di 1 2 3"), words({19, 1, 28, 1, 2, 3, 1, 0, 0, 255}));
}

TEST_F(CommandRules, DisplayImageWithRepeatsDefaultsTheRest) {
    EXPECT_EQ(sent("di 1 2 3 4"), words({19, 1, 28, 1, 2, 3, 4, 0, 0, 255}));
}

TEST_F(CommandRules, DisplayImageSendsZeroRepeatsAsEntered) {
    EXPECT_EQ(sent("di 1 2 3 0"), words({19, 1, 28, 1, 2, 3, 0, 0, 0, 255}));
}

TEST_F(CommandRules, DisplayImageWithQualityDefaultsOffsetAndWhite) {
    EXPECT_EQ(sent("di 1 2 3 4 5"), words({19, 1, 28, 1, 2, 3, 4, 5, 0, 255}));
}

TEST_F(CommandRules, DisplayImageWithOffsetNeedsWhite) {
    EXPECT_TRUE(saysMissing("di 1 2 3 4 5 6"));
    EXPECT_EQ(packetsPut(), Packets{});
    EXPECT_EQ(sent("di 1 2 3 4 5 6 7"), words({19, 2, 28, 1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(CommandRules, DisplayImageWithoutOptionalArgumentsMissesNone) {
    EXPECT_EQ(type("di 1 2 3"), "scanner 0 command: code=19, tag=1, size=28 - hoxirtn=0\n");
}

TEST_F(CommandRules, DisplayImageTakesNothingBehindAnAbsentOptionalArgument) {
    typeInScript({"5"}, "di 1 2 3 %2 8 9 10");
    EXPECT_EQ(packetsPut(), words({19, 1, 28, 1, 2, 3, 1, 0, 0, 255}));
}

TEST_F(CommandRules, QuerySwitchWithPromptFiveTakesThreeTonesAndSendsFive) {
    EXPECT_EQ(sent("qs 1 1000 5 440 100 550 200 660 300"),
              words({80, 1, 36, 1, 1000, 5, 440, 550, 660, 100, 200, 300}));
}

TEST_F(CommandRules, QuerySwitchWithPromptZeroSendsNoTones) {
    EXPECT_EQ(sent("qs 2 0 0"), words({80, 1, 36, 2, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(CommandRules, QuerySwitchTakesNoMoreTonesThanPrompted) {
    EXPECT_EQ(sent("qs 0 500 1 440 100 550 200"), words({80, 1, 36, 0, 500, 1, 440, 0, 0, 100, 0, 0}));
    EXPECT_EQ(sent("qs 0 500 2 440 100 550 200 660 300"), words({80, 2, 36, 0, 500, 2, 440, 550, 0, 100, 200, 0}));
    EXPECT_EQ(sent("qs 0 500 3 440 100 550 200 660 300 770 400"),
              words({80, 3, 36, 0, 500, 3, 440, 550, 660, 100, 200, 300}));
}

TEST_F(CommandRules, QuerySwitchNeedsBothNumbersOfEveryTone) {
    EXPECT_TRUE(saysMissing("qs 0 500 1"));
    EXPECT_TRUE(saysMissing("qs 0 500 1 440"));
    EXPECT_TRUE(saysMissing("qs 0 500 2 440 100"));
    EXPECT_TRUE(saysMissing("qs 0 500 4294967295 440 100 550 200 660"));
    EXPECT_EQ(packetsPut(), Packets{});
}

// A packet of 52 bytes, the data bytes behind port and count.
Packets serialPacket(uint32_t port, uint32_t count, const std::vector<uint8_t>& data) {
    std::vector<uint8_t> packet = wordBytes({101, 1, 40, port, count});
    packet.insert(packet.end(), data.begin(), data.end());
    packet.resize(52);
    return {packet};
}

std::string serialLine(int dataBytes) {
    std::string line = "xs 1";
    for (int i = 1; i <= dataBytes; ++i)
        line += " " + std::to_string(i);
    return line;
}

std::vector<uint8_t> countingUpTo(uint8_t last) {
    std::vector<uint8_t> bytes;
    for (uint8_t byte = 1; byte <= last; ++byte)
        bytes.push_back(byte);
    return bytes;
}

TEST_F(CommandRules, XmtSerialWithOnlyAPortSendsCountZeroAndAllBytes) {
    EXPECT_EQ(type("xs 1"), "scanner 0 command: code=101, tag=1, size=40 - hoxirtn=0\n");
    EXPECT_EQ(packetsPut(), serialPacket(1, 0, {}));
}

TEST_F(CommandRules, XmtSerialTakesTheCountForTheFirstDataByte) {
    EXPECT_EQ(sent("xs 0 3 65 66"), serialPacket(0, 3, {3, 65, 66}));
}

TEST_F(CommandRules, XmtSerialCutsDataToBytes) {
    EXPECT_EQ(sent("xs 0 0x1FF 256 -2"), serialPacket(0, 3, {0xFF, 0, 0xFE}));
}

TEST_F(CommandRules, XmtSerialTakes31DataBytes) {
    EXPECT_EQ(sent(serialLine(31)), serialPacket(1, 31, countingUpTo(31)));
}

TEST_F(CommandRules, XmtSerialTakes32DataBytes) {
    EXPECT_EQ(sent(serialLine(32)), serialPacket(1, 32, countingUpTo(32)));
}

TEST_F(CommandRules, XmtSerialStopsTakingDataAt32Bytes) {
    EXPECT_EQ(sent(serialLine(33)), serialPacket(1, 32, countingUpTo(32)));
    scannerlink::state.nextTag = 1;
    EXPECT_EQ(sent(serialLine(80)), serialPacket(1, 32, countingUpTo(32)));
}

TEST_F(CommandRules, StatusLedsAreLaidOutFingersFirstThenThumbsThenCaptureStates) {
    EXPECT_EQ(sent("setled 1 2 3 4 5 6 7 8 9 10 11 12 13"),
              words({106, 1, 52, 4, 5, 6, 7, 10, 11, 12, 13, 8, 9, 1, 3, 2}));
}

TEST_F(CommandRules, EepromWriteCutsTheValueToAByte) {
    EXPECT_EQ(sent("eew 0x1234 0x1FF"), words({104, 1, 4, 0x00FF1234}));
}

TEST_F(CommandRules, TestKeeps16BitsOfTheTypeAnd8OfTheOption) {
    EXPECT_EQ(sent("test 0x12345 0x1FF"), words({200, 1, 8, 0x2345, 0xFF}));
}

TEST_F(CommandRules, CameraWriteCutsCameraRegisterAndValueToTheirFields) {
    std::vector<uint8_t> packet = wordBytes({102, 1, 6});
    packet.insert(packet.end(), {0xFF, 0x00, 0xCD, 0xAB, 0x34, 0x12});
    EXPECT_EQ(sent("camw 0x1FF 0xFABCD 0xF1234"), Packets{packet});
}

TEST_F(CommandRules, FpgaWriteMarksTheRegisterAndLeavesTheValueWhole) {
    EXPECT_EQ(sent("fpgaw 0xFF1234 0x89ABCDEF"), words({201, 1, 24, 1, 1, 0x00011234, 0x89ABCDEF, 0, 0}));
}

TEST_F(CommandRules, FpgaReadMarksTheRegister) {
    EXPECT_EQ(sent("fpgar 0xFF1234"), words({201, 1, 24, 1, 0, 0x00011234, 0, 0, 0}));
}

TEST_F(CommandRules, VeskReadSendsTargetFourAndTheOption) {
    EXPECT_EQ(sent("veskr 7"), words({201, 1, 24, 4, 7, 0, 0, 0, 0}));
}

TEST_F(CommandRules, ReadWriteTestNeedsAllSixOfItsRecord) {
    EXPECT_TRUE(saysMissing("rdwr 0 1 2 3 4"));
    EXPECT_EQ(sent("rdwr 0 1 2 3 4 5"), words({201, 2, 24, 0, 1, 2, 3, 4, 5}));
}

TEST_F(CommandRules, QuietSendsWithoutEcho) {
    scannerlink::state.quiet = 1;
    EXPECT_EQ(type("xs 1 2"), "");
    EXPECT_EQ(packetsPut(), serialPacket(1, 1, {2}));
}

}  // namespace
}  // namespace operations
