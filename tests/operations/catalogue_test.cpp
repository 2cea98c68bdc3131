// The bytes of every command that is sent as one packet. What is expected is written down here byte by byte.
#include <algorithm>
#include <cstdio>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "console/help.h"
#include "console/operation_table.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace operations {
namespace {

using support::fakeHoxi;
using support::fakePlatform;
using support::HoxiCall;
using support::packetsPut;
using support::wordBytes;

struct Expected {
    const char* longName;
    const char* shortName;
    uint32_t code;
    uint32_t size;  // as the header states it
    // One character for each payload byte: a letter is the next byte, lowest first, of that argument of the line (a is
    // the first one), a digit that value, a dot 0. Blanks only part the fields.
    const char* payload;
    size_t mandatory = 99;  // arguments that may not be missing; 99: all of the payload's
};

constexpr char kOne[] = "aaaa";
constexpr char kTwo[] = "aaaa bbbb";
constexpr char kThree[] = "aaaa bbbb cccc";

constexpr Expected kExpected[] = {
    {"Send_Vers", "sv", 5, 0, ""},
    {"Send_Img_Vers", "siv", 7, 0, ""},
    {"Free_Image", "fi", 12, 12, kThree},
    {"Get_DRK_image", "gdrk", 14, 8, kTwo},
    {"Set_DRK_image", "sdrk", 15, 8, kTwo},
    {"Get_EQU_image", "gequ", 16, 8, kTwo},
    {"Set_EQU_image", "sequ", 17, 8, kTwo},
    {"Display_Image", "di", 19, 28, "aaaa bbbb cccc dddd eeee ffff gggg", 3},
    {"CALib_Finger", "calf", 30, 12, kThree},
    {"CHecK_Platen", "chkp", 31, 12, kThree},
    {"CALib_Hand", "calh", 32, 12, kThree},
    {"CHecK_Roller", "chkr", 33, 12, kThree},
    {"CALib_Slap", "cals", 34, 12, kThree},
    {"CHecK_Flat", "chkf", 35, 12, kThree},
    {"CALib_Palm", "calp", 36, 12, kThree},
    {"ConFiG_ReMote_Image", "cfgrmi", 41, 8, kTwo},
    {"CnTrL_ReMote_Image", "ctlrmi", 42, 4, kOne},
    {"ConFiG_ReMote_Band", "cfgrmb", 44, 4, kOne},
    {"Set_RESolution", "sres", 50, 12, kThree},
    {"ConFiG_Hand_Speed", "cfghs", 51, 12, kThree},
    {"Set_DFC_MASK", "sdfc", 54, 4, kOne},
    {"Get_DFC_MASK", "gdfc", 55, 0, ""},
    {"ConFiG_LoCal_Disp", "cfglcd", 60, 4, kOne},
    {"Fill_LoCal_Disp", "flcd", 61, 20, "aaaa bbbb cccc dddd eeee"},
    {"CnTrL_LoCal_Image", "ctllci", 63, 4, kOne},
    {"ConFiG_LoCal_Image", "cfglci", 66, 16, "aaaa bbbb cccc dddd"},
    {"ConFiG_LoCal_Ovly", "cfglco", 67, 4, kOne},
    {"CAPture_Finger", "capf", 70, 12, kThree},
    {"CAPture_Hand", "caph", 71, 0, kThree},
    {"Stop_CAPture", "scap", 72, 4, kOne},
    {"Review_CAPture", "rcap", 73, 4, kOne},
    {"CAPture_Slap", "caps", 74, 12, kThree},
    {"CAPture_Palm", "capp", 75, 12, kThree},
    {"Finish_Finger", "ff", 77, 12, kThree},
    {"Finish_Slap", "fs", 78, 12, kThree},
    {"Reinit_Capture_Task", "rct", 79, 0, ""},
    // The third argument is above 3 in these tests, so that three pairs are taken.
    {"Query_Switch", "qs", 80, 36, "aaaa bbbb cccc dddd ffff hhhh eeee gggg iiii"},
    {"Query_CAPture", "qcap", 81, 0, ""},
    {"Query_CoMmanD", "qcmd", 82, 4, kOne},
    {"Query_Image_Info", "qii", 83, 12, kThree},
    {"Query_Image_Qual", "qiq", 84, 8, kTwo},
    {"Query_SCanners", "qsc", 85, 0, ""},
    {"Query_Prev_Info", "qpi", 89, 8, kTwo},
    {"ReStore_Parameters", "rsp", 93, 0, ""},
    {"ReStore_Def_Parameters", "rsdp", 95, 0, ""},
    {"ConFiG_Serial", "cfgs", 100, 0, ""},
    {"Xmt_Serial", "xs", 101, 40, "aaaa 3... bcd..... ........ ........ ........", 1},
    {"CAMera_Write", "camw", 102, 6, "a. bb cc"},
    {"CAMera_Read", "camr", 103, 6, "a. bb .."},
    {"EEprom_Write", "eew", 104, 4, "aa b."},
    {"EEprom_Read", "eer", 105, 4, "aa .."},
    {"SET_status_LEDs", "setled", 106, 52, "dddd eeee ffff gggg jjjj kkkk llll mmmm hhhh iiii aaaa cccc bbbb"},
    {"GET_status_LEDs", "getled", 107, 0, ""},
    {"test", "tst", 200, 8, "aa.. b..."},
    {"RDWR", "rdwr", 201, 24, "aaaa bbbb cccc dddd eeee ffff"},
    {"FPGA_Write", "fpgaw", 201, 24, "1... 1... aa1. bbbb .... ...."},
    {"FPGA_Read", "fpgar", 201, 24, "1... .... aa1. .... .... ...."},
    {"Vesk_Read", "veskr", 201, 24, "4... aaaa .... .... .... ...."},
};

void PrintTo(const Expected& expected, std::ostream* out) {
    *out << expected.longName;
}

// A value whose four bytes are found nowhere else among the arguments of a line.
uint32_t valueOf(size_t argument) {
    return 0x04030201u + 0x10101010u * static_cast<uint32_t>(argument + 1);
}

size_t argumentCount(const Expected& expected) {
    size_t count = 0;
    for (const char* byte = expected.payload; *byte != '\0'; ++byte)
        if (*byte >= 'a')
            count = std::max(count, static_cast<size_t>(*byte - 'a' + 1));
    return count;
}

size_t mandatoryCount(const Expected& expected) {
    return std::min(expected.mandatory, argumentCount(expected));
}

std::vector<uint8_t> expectedPacket(const Expected& expected, uint32_t tag, uint32_t (*value)(size_t) = valueOf) {
    std::vector<uint8_t> bytes = wordBytes({expected.code, tag, expected.size});
    std::map<char, int> used;
    for (const char* byte = expected.payload; *byte != '\0'; ++byte) {
        if (*byte >= 'a')
            bytes.push_back(static_cast<uint8_t>(value(static_cast<size_t>(*byte - 'a')) >> 8 * used[*byte]++));
        else if (*byte != ' ')
            bytes.push_back(*byte == '.' ? 0 : static_cast<uint8_t>(*byte - '0'));
    }
    return bytes;
}

// The first arguments of a line, each printed by the format.
std::string arguments(size_t count, const char* format) {
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        char word[32];
        std::snprintf(word, sizeof word, format, valueOf(i));
        text += std::string(" ") + word;
    }
    return text;
}

class Catalogue : public support::TesterTest, public ::testing::WithParamInterface<Expected> {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink(2);
        scannerlink::state.currentScanner = 1;
    }

    // Runs the operation under this name with these arguments and expects the packet, the echo line and no more.
    static void expectSent(const std::string& line, const std::vector<uint8_t>& packet) {
        const Expected& row = GetParam();
        char echo[100];
        std::snprintf(echo, sizeof echo, "scanner 1 command: code=%u, tag=1, size=%u - hoxirtn=0\n", row.code,
                      row.size);
        EXPECT_EQ(type(line), echo);
        EXPECT_EQ(fakeHoxi().calls, (std::vector<HoxiCall>{{"PutCommand", {1, packet.size()}, packet}}));
        EXPECT_TRUE(fakePlatform().sleeps.empty());
        EXPECT_EQ(scannerlink::state.nextTag, 2u);
    }
};

TEST_P(Catalogue, SendsDecimalArguments) {
    const Expected& row = GetParam();
    expectSent(row.longName + arguments(argumentCount(row), "%u"), expectedPacket(row, 1));
}

TEST_P(Catalogue, SendsHexadecimalArguments) {
    const Expected& row = GetParam();
    expectSent(row.shortName + arguments(argumentCount(row), "0x%X"), expectedPacket(row, 1));
}

TEST_P(Catalogue, SendsOctalArguments) {
    const Expected& row = GetParam();
    expectSent(row.shortName + arguments(argumentCount(row), "0%o"), expectedPacket(row, 1));
}

TEST_P(Catalogue, CutsArgumentsOfMoreThan32Bits) {
    const Expected& row = GetParam();
    expectSent(row.shortName + arguments(argumentCount(row), "0x9%08x"), expectedPacket(row, 1));
}

TEST_P(Catalogue, SendsZeroForWordsThatAreNoNumbers) {
    const Expected& row = GetParam();
    expectSent(row.shortName + arguments(argumentCount(row), "x%u"), expectedPacket(row, 1, [](size_t) { return 0u; }));
}

TEST_P(Catalogue, SendsTheNextTag) {
    const Expected& row = GetParam();
    scannerlink::state.nextTag = 0x87654321;
    type(row.shortName + arguments(argumentCount(row), "%u"));
    EXPECT_EQ(packetsPut(), (std::vector<std::vector<uint8_t>>{expectedPacket(row, 0x87654321)}));
    EXPECT_EQ(scannerlink::state.nextTag, 0x87654322u);
}

TEST_P(Catalogue, SendsNothingWithAnArgumentMissingAndUsesUpTheTag) {
    const Expected& row = GetParam();
    const console::Operation* operation = console::findOperation(row.longName);
    ASSERT_NE(operation, nullptr);
    const std::string message = std::string("TamTest: Missing parameter - syntax for ") + row.longName + "(" +
                                row.shortName + ") is:\n" + operation->syntax + "For more information, enter \"? " +
                                row.shortName + "\"\n";
    for (size_t given = 0; given < mandatoryCount(row); ++given) {
        fakeHoxi().calls.clear();
        scannerlink::state.nextTag = 1;
        EXPECT_EQ(type(row.longName + arguments(given, "%u")), message) << given;
        EXPECT_TRUE(fakeHoxi().calls.empty()) << given;
        type("nop");
        EXPECT_EQ(packetsPut(), (std::vector<std::vector<uint8_t>>{wordBytes({0, 2, 0})})) << given;
    }
}

TEST_P(Catalogue, ReportsARefusedPacketOnce) {
    const Expected& row = GetParam();
    fakeHoxi().results["PutCommand"] = 9020;
    EXPECT_EQ(type(row.shortName + arguments(argumentCount(row), "%u")), "TamTest: Failure in HoxiPutCommand - 9020\n");
    EXPECT_EQ(packetsPut().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Operations, Catalogue, ::testing::ValuesIn(kExpected),
                         [](const auto& test) { return std::string(test.param.longName); });

// Operations that take any number of words are not among them.
class FixedArguments : public Catalogue {};

TEST_P(FixedArguments, IgnoreFurtherWords) {
    const Expected& row = GetParam();
    expectSent(row.shortName + arguments(argumentCount(row), "%u") + " 0xFFFFFFFF junk", expectedPacket(row, 1));
}

std::vector<Expected> withFixedArguments() {
    std::vector<Expected> rows(std::begin(kExpected), std::end(kExpected));
    std::erase_if(rows, [](const Expected& row) { return row.code == 101; });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Operations, FixedArguments, ::testing::ValuesIn(withFixedArguments()),
                         [](const auto& test) { return std::string(test.param.longName); });

}  // namespace
}  // namespace operations
