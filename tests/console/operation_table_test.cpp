// The operation table checks itself: a wrong row fails here before any operation is tried.
#include "console/operation_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/not_built.h"

namespace console {
namespace {

struct Names {
    const char* longName;
    const char* shortName;
};

// The published names in their published order. Written down a second time on purpose: operators' scripts depend on
// them.
constexpr Names kPublishedNames[] = {
    {"help", "?"},
    {"Script", "s"},
    {"Loop_Script", "ls"},
    {"Loop_Script_Counted", "lsc"},
    {"SCaNneR", "scnr"},
    {"ESCape", "esc"},
    {"KBHit_Enable", "kbhe"},
    {"Begin_LOG", "blog"},
    {"End_LOG", "elog"},
    {"Reset_LOG", "rlog"},
    {"Wait", "w"},
    {"Event_Wait", "ew"},
    {"Capture_Wait", "cw"},
    {"Tag", "t"},
    {"Set_Hoxi_Timeouts", "sst"},
    {"Enable_Hoxi_Break", "esb"},
    {"Quit", "q"},
    {"BusReSeT", "brst"},
    {"NOPLoop", "nopl"},
    {"Video_START", "vstart"},
    {"Video_STOP", "vstop"},
    {"NOP", "nop"},
    {"ReSeT", "rst"},
    {"ReSeTLoop", "rstl"},
    {"Send_Vers", "sv"},
    {"Send_Img_Vers", "siv"},
    {"Send_Image", "si"},
    {"Send_Image_Loop_Test", "silt"},
    {"Recv_Image", "ri"},
    {"Free_Image", "fi"},
    {"Get_EQU_image", "gequ"},
    {"Set_EQU_image", "sequ"},
    {"Get_DRK_image", "gdrk"},
    {"Set_DRK_image", "sdrk"},
    {"Display_Image", "di"},
    {"Recv_COFf", "rcof"},
    {"Recv_PCIP", "rpcip"},
    {"Recv_IPP", "ripp"},
    {"Recv_Gribb_FW", "rtfw"},
    {"Recv_Gribb_FPga", "rtfp"},
    {"Recv_KErNel", "rken"},
    {"Recv_RAMdisk", "rram"},
    {"Recv_BOoTloader", "rbot"},
    {"Recv_UBlLoader", "rubl"},
    {"Recv_JFFS2", "rjfs"},
    {"Recv_Bak_KErNel", "rbken"},
    {"Recv_Bak_RAMdisk", "rbram"},
    {"Recv_GUI_Images", "rguii"},
    {"Recv_Oled_Driver_Bd", "rodb"},
    {"CALib_Finger", "calf"},
    {"CHecK_Platen", "chkp"},
    {"CALib_Hand", "calh"},
    {"CHecK_Roller", "chkr"},
    {"CALib_Slap", "cals"},
    {"CHecK_Flat", "chkf"},
    {"CALib_Palm", "calp"},
    {"ConFiG_ReMote_Image", "cfgrmi"},
    {"CnTrL_ReMote_Image", "ctlrmi"},
    {"ConFiG_ReMote_Map", "cfgrmm"},
    {"ConFiG_ReMote_Band", "cfgrmb"},
    {"ConFiG_LoCal_Disp", "cfglcd"},
    {"Fill_LoCal_Disp", "flcd"},
    {"Write_LoCal_Disp", "wlcd"},
    {"Write_LoCal_Ovly", "wlco"},
    {"CnTrL_LoCal_Image", "ctllci"},
    {"ConFiG_LoCal_Palt", "cfglcp"},
    {"ConFiG_LoCal_Map", "cfglcm"},
    {"ConFiG_LoCal_Image", "cfglci"},
    {"ConFiG_LoCal_Ovly", "cfglco"},
    {"Set_RESolution", "sres"},
    {"ConFiG_Hand_Speed", "cfghs"},
    {"CAPture_Finger", "capf"},
    {"CAPture_Hand", "caph"},
    {"Stop_CAPture", "scap"},
    {"Review_CAPture", "rcap"},
    {"CAPture_Slap", "caps"},
    {"CAPture_Palm", "capp"},
    {"Finish_Finger", "ff"},
    {"Finish_Slap", "fs"},
    {"Reinit_Capture_Task", "rct"},
    {"Query_Switch", "qs"},
    {"Query_CAPture", "qcap"},
    {"Query_CoMmanD", "qcmd"},
    {"Query_Image_Info", "qii"},
    {"Query_Image_Qual", "qiq"},
    {"Query_SCanners", "qsc"},
    {"Set_Parameters", "sp"},
    {"Get_Parameters", "gp"},
    {"Get_Def_Parameters", "gdp"},
    {"SaVe_Parameters", "svp"},
    {"ReStore_Parameters", "rsp"},
    {"Check_Parameters", "cp"},
    {"ReStore_Def_Parameters", "rsdp"},
    {"ConFiG_Serial", "cfgs"},
    {"Xmt_Serial", "xs"},
    {"FileVersion", "ver"},
    {"Set_Camera_Parameters", "scp"},
    {"Get_Camera_Parameters", "gcp"},
    {"CAMera_Write", "camw"},
    {"CAMera_Read", "camr"},
    {"EEprom_Read", "eer"},
    {"EEprom_Write", "eew"},
    {"EEprom_Write_Test", "eewt"},
    {"Recv_Color_Norm_Table", "rcnt"},
    {"CALibrate_Cameras", "calc"},
    {"Calibrate_FLEXure", "cflex"},
    {"SEQuential_CAPture", "seqcap"},
    {"SET_status_LEDs", "setled"},
    {"GET_status_LEDs", "getled"},
    {"Query_Prev_Info", "qpi"},
    {"test", "tst"},
    {"Get_DFC_MASK", "gdfc"},
    {"Set_DFC_MASK", "sdfc"},
    {"RDWR", "rdwr"},
    {"FPGA_Write", "fpgaw"},
    {"FPGA_Read", "fpgar"},
    {"Vesk_Read", "veskr"},
    {"HISTO_limits", "histl"},
};

struct Syntax {
    int row;
    const char* text;
};

// Syntax texts that are easily "corrected" by mistake: of several lines, with a blank before the newline, or with
// another spelling than the long name.
constexpr Syntax kPublishedSyntax[] = {
    {14, "Set_Hoxi_Timeout [<asyncPutTimeoutMs> [<asyncGetTimeoutMs>]]\n"},
    {18, "NOPL\n"},
    {34,
     "Display_Image <handle> <scan_type> <image_type>\n                            [<repeats> [<quality> [<offset> "
     "<white>]]]\n"},
    {58, "ConFiG_ReMote_Map <range>\n   -or-\nConFiG_ReMote_Map <file>\n"},
    {63, "Write_Local_Ovly <tiffFileName> <hzntl_pos> <vertl_pos>\n"},
    {65,
     "ConFiG_LoCal_Palt <palette_index> <red_level> <green_level> <blue_level>\n   -or-\nConFiG_LoCal_Palt "
     "<bmp_file>\n   -or-\nConFiG_LoCal_Palt <file>\n"},
    {66, "ConFiG_LoCal_Map <first_norm> <num_norm> <first_qual> <num_qual>\n   -or-\nConFiG_LoCal_Map <file>\n"},
    {86, "Set_Parameters <set> <paramters>... \n   -or-\nSet_Parameters <file>\n"},
    {92, "Restore_Default_Parameters\n"},
    {96,
     "Set_Camera_Parameters <exposure 1> <gain a1> <gain b1>\n                      <offset a1> <offset b1> <exposure "
     "2>\n                      <gain a2> <gain b2> <offset a2> <offset b2>\n"},
    {99, "CAMera_Read <camera> <register> \n"},
    {104,
     "CALibrate_Camera <optics> <serial number> [<directory>[<starting finger exp>\n        [<starting slap "
     "exp>[<starting palm exp>]]]]\n"},
    {107,
     "SET_status_LEDs <cap stat L4> <cap stat thumbs> <cap stat R4>\n                <L4 little> <L4 ring> <L4 middle> "
     "<L4 index>\n                <left thumb> <right thumb>\n                <R4 index> <R4 middle> <R4 ring> <R4 "
     "little>\n"},
    {110, "test <test type> <test option> \n"},
    {111, "Get_DFC_mask \n"},
    {112, "Set_DFC_mask <DFC bit mask> \n"},
    {113, "rdwr <target> <test option> \n"},
};

// Long names whose capitals and digits do not spell the short name.
const std::set<std::string> kCapitalsDiffer = {
    "help", "Set_Hoxi_Timeouts", "Enable_Hoxi_Break", "Recv_Gribb_FW", "Recv_Gribb_FPga", "Recv_JFFS2", "FileVersion",
    "test", "Get_DFC_MASK",      "Set_DFC_MASK",      "Vesk_Read",     "HISTO_limits",
};

// Help texts that do not keep the indentation by eight blanks.
const std::set<std::string> kOwnIndentation = {
    "Video_START", "Video_STOP", "CALibrate_Cameras", "Calibrate_FLEXure", "SEQuential_CAPture",
};

constexpr std::string_view kIndentation = "        ";
constexpr size_t kMaxHelpWidth = 79;

std::span<const Operation> rows() {
    return std::span(kOperations).first(kOperationCount);
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

std::string capitalsAndDigits(std::string_view longName) {
    std::string kept;
    std::copy_if(longName.begin(), longName.end(), std::back_inserter(kept),
                 [](unsigned char c) { return std::isupper(c) || std::isdigit(c); });
    return lowerCase(kept);
}

// The lines of a text without their newlines; the text ends in one.
std::vector<std::string> lines(std::string_view text) {
    std::vector<std::string> result;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size() - 1);
        result.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return result;
}

TEST(OperationTable, PublishedListIsComplete) {
    EXPECT_EQ(std::size(kPublishedNames), 118u);
    EXPECT_EQ(kOperationCount, 118);
}

TEST(OperationTable, EveryRowIsFilled) {
    for (const Operation& row : rows()) {
        ASSERT_NE(row.longName, nullptr) << "row " << &row - kOperations;
        EXPECT_NE(row.shortName, nullptr) << row.longName;
        EXPECT_NE(row.handler, nullptr) << row.longName;
        EXPECT_NE(row.syntax, nullptr) << row.longName;
        EXPECT_NE(row.help, nullptr) << row.longName;
    }
}

TEST(OperationTable, EndsWithARowOfNullPointers) {
    const Operation& last = kOperations[kOperationCount];
    EXPECT_EQ(last.longName, nullptr);
    EXPECT_EQ(last.shortName, nullptr);
    EXPECT_EQ(last.handler, nullptr);
    EXPECT_EQ(last.syntax, nullptr);
    EXPECT_EQ(last.help, nullptr);
}

TEST(OperationTable, NamesAreThePublishedOnesInOrder) {
    for (int i = 0; i < kOperationCount; ++i) {
        EXPECT_STREQ(kOperations[i].longName, kPublishedNames[i].longName) << "row " << i;
        EXPECT_STREQ(kOperations[i].shortName, kPublishedNames[i].shortName) << "row " << i;
    }
}

TEST(OperationTable, NoNameFindsTwoRows) {
    std::map<std::string, int> owners;
    for (int i = 0; i < kOperationCount; ++i)
        for (const char* name : {kOperations[i].longName, kOperations[i].shortName}) {
            const auto [found, isNew] = owners.emplace(lowerCase(name), i);
            EXPECT_TRUE(isNew || found->second == i) << name << " in rows " << found->second << " and " << i;
        }
}

TEST(OperationTable, ShortNamesAreLowerCaseWords) {
    for (const Operation& row : rows()) {
        EXPECT_EQ(row.shortName, lowerCase(row.shortName));
        EXPECT_EQ(std::string_view(row.shortName).find_first_of(" \t\n%;"), std::string_view::npos) << row.shortName;
        EXPECT_EQ(std::string_view(row.longName).find_first_of(" \t\n%;"), std::string_view::npos) << row.longName;
    }
}

TEST(OperationTable, ShortNamesFitTheirColumnOfTheGeneralHelp) {
    for (const Operation& row : rows())
        EXPECT_LT(std::string_view(row.shortName).size(), 8u) << row.longName;
}

TEST(OperationTable, CapitalsSpellTheShortNameButForTheKnownExceptions) {
    for (const Operation& row : rows()) {
        const bool differs = capitalsAndDigits(row.longName) != row.shortName;
        EXPECT_EQ(differs, kCapitalsDiffer.contains(row.longName)) << row.longName << " / " << row.shortName;
    }
}

TEST(OperationTable, TextsEndInANewline) {
    for (const Operation& row : rows()) {
        EXPECT_TRUE(std::string_view(row.syntax).ends_with('\n')) << row.longName;
        EXPECT_TRUE(std::string_view(row.help).ends_with('\n')) << row.longName;
        EXPECT_FALSE(std::string_view(row.help).ends_with("\n\n")) << row.longName;
    }
}

TEST(OperationTable, HelpLinesFitTheConsole) {
    for (const Operation& row : rows())
        for (const std::string& line : lines(row.help))
            EXPECT_LE(line.size(), kMaxHelpWidth) << row.longName << ": " << line;
}

TEST(OperationTable, HelpLinesAreIndentedByEightBlanks) {
    for (const Operation& row : rows()) {
        if (kOwnIndentation.contains(row.longName))
            continue;
        EXPECT_NE(row.help[0], '\n') << row.longName;
        for (const std::string& line : lines(row.help))
            EXPECT_TRUE(line.empty() || line.starts_with(kIndentation)) << row.longName << ": " << line;
    }
}

TEST(OperationTable, TextsAreOfPrintableCharacters) {
    for (const Operation& row : rows())
        for (const char* text : {row.syntax, row.help})
            for (const std::string& line : lines(text))
                EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](unsigned char c) { return c >= ' ' && c < 127; }))
                    << row.longName << ": " << line;
}

TEST(OperationTable, UnusualSyntaxTextsStandAsPublished) {
    for (const Syntax& published : kPublishedSyntax)
        EXPECT_STREQ(kOperations[published.row].syntax, published.text) << "row " << published.row;
}

TEST(OperationTable, ScriptHelpIsRepeatedByTheLoopingOperations) {
    const std::string script = kOperations[1].help;
    EXPECT_EQ(kOperations[2].help, script +
                                       "\n        Loop_Script will repeat running the script file until a character\n"
                                       "        is entered from the console to stop the looping.  See Script for\n"
                                       "        simple, non-repeating script execution.\n");
    EXPECT_EQ(kOperations[3].help, script +
                                       "\n        Loop_Script_Counted will repeat running the script file until\n"
                                       "        the repetition count is reached or a character is entered from\n"
                                       "        the console to stop the looping.  See Script for simple,\n"
                                       "        non-repeating script execution.\n");
}

TEST(OperationTable, SerialSetUpSaysThatItIsNotImplemented) {
    EXPECT_STREQ(kOperations[93].longName, "ConFiG_Serial");
    EXPECT_NE(std::string_view(kOperations[93].help).find("not implemented"), std::string_view::npos);
}

// Shows how far the tester has grown; no figure is wrong in itself.
TEST(OperationTable, CountsTheOperationsStillToCome) {
    const auto toCome =
        std::count_if(rows().begin(), rows().end(), [](const Operation& row) { return row.handler == notBuilt; });
    std::printf("%d of %d operations are still to come\n", static_cast<int>(toCome), kOperationCount);
}

}  // namespace
}  // namespace console
