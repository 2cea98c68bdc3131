// The operation table checks itself: a wrong row fails here before any operation is tried.
#include "console/operation_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
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

// The published names and syntax texts in their published order. Written down a second time on purpose: operators'
// scripts depend on the names, and blanks before a newline or spellings unlike the long name's are easily "corrected".
constexpr struct {
    const char* longName;
    const char* shortName;
    const char* syntax;
} kPublished[] = {
    {"help", "?", "help [<operation>]\n"},
    {"Script", "s", "Script <script_file_name> [<parm1> <parm2> ...]\n"},
    {"Loop_Script", "ls", "Loop_Script <script_file_name> [<parm1> <parm2> ...]\n"},
    {"Loop_Script_Counted", "lsc", "Loop_Script_Counted <count> <script_file_name> [<parm1> <parm2> ...]\n"},
    {"SCaNneR", "scnr", "SCaNneR <scanner index>\n"},
    {"ESCape", "esc", "ESC\n"},
    {"KBHit_Enable", "kbhe", "KBHit_Enable <enable_non_zero>\n"},
    {"Begin_LOG", "blog", "Begin_LOG <log_file_name>\n"},
    {"End_LOG", "elog", "End_LOG\n"},
    {"Reset_LOG", "rlog", "Reset_LOG\n"},
    {"Wait", "w", "Wait [<ms>]\n"},
    {"Event_Wait", "ew", "Event_Wait <event_code> <state_code> [<tag_offset>]\n"},
    {"Capture_Wait", "cw", "Capture_Wait <progress_code> [<tag_offset>]\n"},
    {"Tag", "t", "Tag [<newtag>]\n"},
    {"Set_Hoxi_Timeouts", "sst", "Set_Hoxi_Timeout [<asyncPutTimeoutMs> [<asyncGetTimeoutMs>]]\n"},
    {"Enable_Hoxi_Break", "esb", "Enable_Hoxi_Break [<enableIf1_disableIf0>]\n"},
    {"Quit", "q", "Quit\n"},
    {"BusReSeT", "brst", "BusReSeT\n"},
    {"NOPLoop", "nopl", "NOPL\n"},
    {"Video_START", "vstart", "Video_START <rows> <columns> [<band-size> [<quality>]]\n"},
    {"Video_STOP", "vstop", "Video_STOP\n"},
    {"NOP", "nop", "NOP\n"},
    {"ReSeT", "rst", "ReSeT\n"},
    {"ReSeTLoop", "rstl", "ReSeTLoop\n"},
    {"Send_Vers", "sv", "Send_Vers\n"},
    {"Send_Img_Vers", "siv", "Send_Img_Vers\n"},
    {"Send_Image", "si", "Send_Image <tiff_file> <handle> <scan_type> <image_type> [<blksize>]\n"},
    {"Send_Image_Loop_Test", "silt", "Send_Image_Loop_Test <in_file> <out_file> <loop_count> [<blksize>]\n"},
    {"Recv_Image", "ri", "Recv_Image <tiff_file> <handle> <scan_type> <image_type> [<blksize>]\n"},
    {"Free_Image", "fi", "Free_Image <handle> <scan_type> <image_type>\n"},
    {"Get_EQU_image", "gequ", "Get_EQU_image <handle> <scanner>\n"},
    {"Set_EQU_image", "sequ", "Set_EQU_image <handle> <scanner>\n"},
    {"Get_DRK_image", "gdrk", "Get_DRK_image <handle> <scanner>\n"},
    {"Set_DRK_image", "sdrk", "Set_DRK_image <handle> <scanner>\n"},
    {"Display_Image", "di",
     "Display_Image <handle> <scan_type> <image_type>\n"
     "                            [<repeats> [<quality> [<offset> <white>]]]\n"},
    {"Recv_COFf", "rcof", "Recv_COFf <coff_file.ovk>\n"},
    {"Recv_PCIP", "rpcip", "Recv_PCIP <pcip_file.rbf>\n"},
    {"Recv_IPP", "ripp", "Recv_IPP <ipp_file.rbf>\n"},
    {"Recv_Gribb_FW", "rtfw", "Recv_Gribb_FW <firmware_file.hex>\n"},
    {"Recv_Gribb_FPga", "rtfp", "Recv_Gribb_FPga <fpga_file.xsvf>\n"},
    {"Recv_KErNel", "rken", "Recv_KErNel <kernel file.knl>\n"},
    {"Recv_RAMdisk", "rram", "Recv_RAMdisk <ram disk file.ram>\n"},
    {"Recv_BOoTloader", "rbot", "Recv_BOoTloader <uboot file.ubt>\n"},
    {"Recv_UBlLoader", "rubl", "Recv_UBlLoader <ubl disk file.ubl>\n"},
    {"Recv_JFFS2", "rjfs", "Recv_JFFS2 <jffs2 file.jfs>\n"},
    {"Recv_Bak_KErNel", "rbken", "Recv_Bak_KErNel <kernel file.knl>\n"},
    {"Recv_Bak_RAMdisk", "rbram", "Recv_Bak_RAMdisk <ram disk file.ram>\n"},
    {"Recv_GUI_Images", "rguii", "Recv_GUI_Images <GUI image file.img>\n"},
    {"Recv_Oled_Driver_Bd", "rodb", "Recv_Oled_Driver_Bd <OLED Driver Board image file.img>\n"},
    {"CALib_Finger", "calf", "CALib_Finger <handle> <scan_mode> <frames>\n"},
    {"CHecK_Platen", "chkp", "CHecK_Platen <handle> <scan_mode> <frames>\n"},
    {"CALib_Hand", "calh", "CALib_Hand <handle> <scan_mode> <repeats>\n"},
    {"CHecK_Roller", "chkr", "CHecK_Roller <handle> <scan_mode> <repeats>\n"},
    {"CALib_Slap", "cals", "CALib_Slap <handle> <scan_mode> <frames>\n"},
    {"CHecK_Flat", "chkf", "CHecK_Flat <handle> <scan_mode> <frames>\n"},
    {"CALib_Palm", "calp", "CALib_Palm <handle> <scan_mode> <frames>\n"},
    {"ConFiG_ReMote_Image", "cfgrmi", "ConFiG_ReMote_Image <hzntl_ext> <vertl_ext>\n"},
    {"CnTrL_ReMote_Image", "ctlrmi", "CnTrL_ReMote_Image <mode>\n"},
    {"ConFiG_ReMote_Map", "cfgrmm",
     "ConFiG_ReMote_Map <range>\n"
     "   -or-\n"
     "ConFiG_ReMote_Map <file>\n"},
    {"ConFiG_ReMote_Band", "cfgrmb", "ConFiG_ReMote_Band <lines>\n"},
    {"ConFiG_LoCal_Disp", "cfglcd", "ConFiG_LoCal_Disp <display_mode>\n"},
    {"Fill_LoCal_Disp", "flcd", "Fill_LoCal_Disp <hzntl_pos> <vertl_pos> <hzntl_ext> <vertl_ext> <pixel>\n"},
    {"Write_LoCal_Disp", "wlcd", "Write_LoCal_Disp <bmp_file> <hzntl_pos> <vertl_pos>\n"},
    {"Write_LoCal_Ovly", "wlco", "Write_Local_Ovly <tiffFileName> <hzntl_pos> <vertl_pos>\n"},
    {"CnTrL_LoCal_Image", "ctllci", "CnTrL_LoCal_Image <mode>\n"},
    {"ConFiG_LoCal_Palt", "cfglcp",
     "ConFiG_LoCal_Palt <palette_index> <red_level> <green_level> <blue_level>\n"
     "   -or-\n"
     "ConFiG_LoCal_Palt <bmp_file>\n"
     "   -or-\n"
     "ConFiG_LoCal_Palt <file>\n"},
    {"ConFiG_LoCal_Map", "cfglcm",
     "ConFiG_LoCal_Map <first_norm> <num_norm> <first_qual> <num_qual>\n"
     "   -or-\n"
     "ConFiG_LoCal_Map <file>\n"},
    {"ConFiG_LoCal_Image", "cfglci", "ConFiG_LoCal_Image <hzntl_pos> <vertl_pos> <hzntl_ext> <vertl_ext>\n"},
    {"ConFiG_LoCal_Ovly", "cfglco", "ConFiG_LoCal_Ovly <overlay_color>\n"},
    {"Set_RESolution", "sres", "Set_RESolution <scanners> <units> <resolution>\n"},
    {"ConFiG_Hand_Speed", "cfghs", "ConFiG_Hand_Speed <left> <center> <right>\n"},
    {"CAPture_Finger", "capf", "CAPture_Finger <handle> <scan_type> <scan_mode>\n"},
    {"CAPture_Hand", "caph", "CAPture_Hand <handle> <scan_type> <scan_mode>\n"},
    {"Stop_CAPture", "scap", "Stop_CAPture <choice>\n"},
    {"Review_CAPture", "rcap", "Review_CAPture <choice>\n"},
    {"CAPture_Slap", "caps", "CAPture_Slap <handle> <scan_type> <scan_mode>\n"},
    {"CAPture_Palm", "capp", "CAPture_Palm <handle> <scan_type> <scan_mode>\n"},
    {"Finish_Finger", "ff", "Finish_Finger <handle> <scan_type> <scan_mode>\n"},
    {"Finish_Slap", "fs", "Finish_Slap <handle> <scan_type> <scan_mode>\n"},
    {"Reinit_Capture_Task", "rct", "Reinit_Capture_Task\n"},
    {"Query_Switch", "qs", "Query_Switch <mode> <timeout> <prompt> [ <frequency> <duration> ... ]\n"},
    {"Query_CAPture", "qcap", "Query_CAPture\n"},
    {"Query_CoMmanD", "qcmd", "Query_CoMmanD <tag_id>\n"},
    {"Query_Image_Info", "qii", "Query_Image_Info <handle> <scan_type> <image_type>\n"},
    {"Query_Image_Qual", "qiq", "Query_Image_Qual <handle> <scan_type>\n"},
    {"Query_SCanners", "qsc", "Query_SCanners\n"},
    {"Set_Parameters", "sp",
     "Set_Parameters <set> <paramters>... \n"
     "   -or-\n"
     "Set_Parameters <file>\n"},
    {"Get_Parameters", "gp", "Get_Parameters <set> [<format>]\n"},
    {"Get_Def_Parameters", "gdp", "Get_Def_Parameters <set> [<format>]\n"},
    {"SaVe_Parameters", "svp", "SaVe_Parameters\n"},
    {"ReStore_Parameters", "rsp", "ReStore_Parameters\n"},
    {"Check_Parameters", "cp", "Check_Parameters <set>\n"},
    {"ReStore_Def_Parameters", "rsdp", "Restore_Default_Parameters\n"},
    {"ConFiG_Serial", "cfgs", "ConFiG_Serial\n"},
    {"Xmt_Serial", "xs", "Xmt_Serial <port> <count> [<byte> ...]\n"},
    {"FileVersion", "ver", "FileVersion\n"},
    {"Set_Camera_Parameters", "scp",
     "Set_Camera_Parameters <exposure 1> <gain a1> <gain b1>\n"
     "                      <offset a1> <offset b1> <exposure 2>\n"
     "                      <gain a2> <gain b2> <offset a2> <offset b2>\n"},
    {"Get_Camera_Parameters", "gcp", "Get_Camera_Parameters\n"},
    {"CAMera_Write", "camw", "CAMera_Write <camera> <register> <value>\n"},
    {"CAMera_Read", "camr", "CAMera_Read <camera> <register> \n"},
    {"EEprom_Read", "eer", "EEprom_Read <address>\n"},
    {"EEprom_Write", "eew", "EEprom_Write <address> <value>\n"},
    {"EEprom_Write_Test", "eewt", "EEprom_Write_Test <start address> <end_address> <seed>\n"},
    {"Recv_Color_Norm_Table", "rcnt", "Recv_Color_Norm_Table <NormalizationTable.cc>\n"},
    {"CALibrate_Cameras", "calc",
     "CALibrate_Camera <optics> <serial number> [<directory>[<starting finger exp>\n"
     "        [<starting slap exp>[<starting palm exp>]]]]\n"},
    {"Calibrate_FLEXure", "cflex", "Calibrate_Flexure [<directory>]\n"},
    {"SEQuential_CAPture", "seqcap", "SEQuential_CAPture <image type> <delay> [<directory>]\n"},
    {"SET_status_LEDs", "setled",
     "SET_status_LEDs <cap stat L4> <cap stat thumbs> <cap stat R4>\n"
     "                <L4 little> <L4 ring> <L4 middle> <L4 index>\n"
     "                <left thumb> <right thumb>\n"
     "                <R4 index> <R4 middle> <R4 ring> <R4 little>\n"},
    {"GET_status_LEDs", "getled", "GET_status_LEDs\n"},
    {"Query_Prev_Info", "qpi", "Query_Prev_Info <handle> <scan_type>\n"},
    {"test", "tst", "test <test type> <test option> \n"},
    {"Get_DFC_MASK", "gdfc", "Get_DFC_mask \n"},
    {"Set_DFC_MASK", "sdfc", "Set_DFC_mask <DFC bit mask> \n"},
    {"RDWR", "rdwr", "rdwr <target> <test option> \n"},
    {"FPGA_Write", "fpgaw", "FPGA_Write <register> <value>\n"},
    {"FPGA_Read", "fpgar", "FPGA_Read <register>\n"},
    {"Vesk_Read", "veskr", "VESKRead <test option>\n"},
    {"HISTO_limits", "histl", "HISTOlimit <input filename> <output filename>\n"},
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
    EXPECT_EQ(std::size(kPublished), 118u);
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
        EXPECT_STREQ(kOperations[i].longName, kPublished[i].longName) << "row " << i;
        EXPECT_STREQ(kOperations[i].shortName, kPublished[i].shortName) << "row " << i;
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

// The tester's own operations and those of the calibration have help texts that leave it to the reader.
TEST(OperationTable, HelpTellsOfEveryArgument) {
    constexpr int kOwnOperations = 24;
    const std::set<std::string> others = {"CALibrate_Cameras", "Calibrate_FLEXure", "SEQuential_CAPture"};
    for (const Operation& row : rows().subspan(kOwnOperations)) {
        if (others.contains(row.longName))
            continue;
        const std::string syntax = row.syntax;
        for (size_t begin = 0; (begin = syntax.find('<', begin)) != std::string::npos; ++begin) {
            const std::string argument = syntax.substr(begin, syntax.find('>', begin) - begin + 1);
            EXPECT_NE(std::string_view(row.help).find(argument), std::string_view::npos)
                << row.longName << ": " << argument;
        }
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

TEST(OperationTable, SyntaxTextsStandAsPublished) {
    for (int i = 0; i < kOperationCount; ++i)
        EXPECT_STREQ(kOperations[i].syntax, kPublished[i].syntax) << "row " << i;
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

// Live video and the production calibrations; whoever builds one takes its name out.
TEST(OperationTable, NothingElseIsStillToCome) {
    const std::set<std::string> toCome = {"Video_START", "Video_STOP", "CALibrate_Cameras", "Calibrate_FLEXure",
                                          "SEQuential_CAPture"};
    for (const Operation& row : rows())
        EXPECT_EQ(row.handler == notBuilt, toCome.contains(row.longName)) << row.longName;
}

}  // namespace
}  // namespace console
