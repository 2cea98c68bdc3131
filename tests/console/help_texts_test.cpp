// The help of the tester's own operations, word for word.

#include "support/tester_test.h"

namespace console {
namespace {

struct HelpCase {
    const char* name;
    const char* text;
};

class HelpText : public support::TesterTest, public ::testing::WithParamInterface<HelpCase> {};

TEST_P(HelpText, IsSyntaxAndDescription) {
    EXPECT_EQ(type(std::string("help ") + GetParam().name), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Operations, HelpText,
    ::testing::Values(HelpCase{"?",
                               "help [<operation>]\n"
                               "        The help command is used to show general information about\n"
                               "        the tester, or to show details about a particular tester\n"
                               "        operation.  If no operation name is entered, the general\n"
                               "        information is shown.\n"},
                      HelpCase{"s",
                               "Script <script_file_name> [<parm1> <parm2> ...]\n"
                               "        This operation invokes a script.  A script is a file with\n"
                               "        tester commands in it.  Scripts may be nested up to four\n"
                               "        levels deep.  That is, scripts may contain script commands.\n"
                               "        Scripts may include paramters to be substituted with values\n"
                               "        on the invokation line.  Parameters are referred to via\n"
                               "        %1 for the first parameter, %2 for the second parameter,\n"
                               "        etc., in much the same manner as for a .bat file.  Scripts\n"
                               "        end at the end of file.\n"},
                      HelpCase{"ls",
                               "Loop_Script <script_file_name> [<parm1> <parm2> ...]\n"
                               "        This operation invokes a script.  A script is a file with\n"
                               "        tester commands in it.  Scripts may be nested up to four\n"
                               "        levels deep.  That is, scripts may contain script commands.\n"
                               "        Scripts may include paramters to be substituted with values\n"
                               "        on the invokation line.  Parameters are referred to via\n"
                               "        %1 for the first parameter, %2 for the second parameter,\n"
                               "        etc., in much the same manner as for a .bat file.  Scripts\n"
                               "        end at the end of file.\n"
                               "\n"
                               "        Loop_Script will repeat running the script file until a character\n"
                               "        is entered from the console to stop the looping.  See Script for\n"
                               "        simple, non-repeating script execution.\n"},
                      HelpCase{"lsc",
                               "Loop_Script_Counted <count> <script_file_name> [<parm1> <parm2> ...]\n"
                               "        This operation invokes a script.  A script is a file with\n"
                               "        tester commands in it.  Scripts may be nested up to four\n"
                               "        levels deep.  That is, scripts may contain script commands.\n"
                               "        Scripts may include paramters to be substituted with values\n"
                               "        on the invokation line.  Parameters are referred to via\n"
                               "        %1 for the first parameter, %2 for the second parameter,\n"
                               "        etc., in much the same manner as for a .bat file.  Scripts\n"
                               "        end at the end of file.\n"
                               "\n"
                               "        Loop_Script_Counted will repeat running the script file until\n"
                               "        the repetition count is reached or a character is entered from\n"
                               "        the console to stop the looping.  See Script for simple,\n"
                               "        non-repeating script execution.\n"},
                      HelpCase{"scnr",
                               "SCaNneR <scanner index>\n"
                               "        This operation selects a scanner.  Scanner indices range from\n"
                               "        zero to the number of available scanners minus one.\n"},
                      HelpCase{"esc",
                               "ESC\n"
                               "        This operation exits all pending scripts.\n"},
                      HelpCase{"kbhe",
                               "KBHit_Enable <enable_non_zero>\n"
                               "        Set the variable controlling kbhit checking.  In general,\n"
                               "        this variable should be 1 (its default).  It may be set to\n"
                               "        zero for testing purposes.\n"},
                      HelpCase{"blog",
                               "Begin_LOG <log_file_name>\n"
                               "        This operation opens a file that logs commands and status.  If\n"
                               "        the named file already exists then it will be overwritten.\n"},
                      HelpCase{"elog",
                               "End_LOG\n"
                               "        This operation stops logging to a previously begun log file.\n"},
                      HelpCase{"rlog",
                               "Reset_LOG\n"
                               "        This operation discards the contents of a previously begun log\n"
                               "        file, then continues logging to it.\n"},
                      HelpCase{"w",
                               "Wait [<ms>]\n"
                               "        This operation is really only useful in scripts.  It tells the\n"
                               "        tester to wait either for a specific number of milliseconds, or\n"
                               "        until the user enters a keystroke.  The user is informed that he\n"
                               "        or she may enter a blank or CR to continue, or an ESC to exit all\n"
                               "        levels of scripting.\n"},
                      HelpCase{"ew",
                               "Event_Wait <event_code> <state_code> [<tag_offset>]\n"
                               "        This operation is really only useful in scripts.  It tells the\n"
                               "        tester to wait until a specific status message has been received\n"
                               "        from the scanner, or until the user enters a blank or CR to abort\n"
                               "        the wait, or an ESC to exit all levels of scripting.  The event\n"
                               "        code is the main status code.  The state code is the main status\n"
                               "        state.  The code will only be recognized if it arrives with the\n"
                               "        tag of the most recent command, optionally adjusted by subtracting\n"
                               "        the tag offset.\n"},
                      HelpCase{"cw",
                               "Capture_Wait <progress_code> [<tag_offset>]\n"
                               "        This operation is really only useful in scripts.  It tells the\n"
                               "        tester to wait until a specific capture progress message has\n"
                               "        been received from the scanner, or until the user enters a blank\n"
                               "        or CR to abort the wait, or an ESC to exit all levels of scripting.\n"
                               "        The progress code is the code within the 'capt_info' member of the\n"
                               "        status message.  The message will only be recognized if it arrives\n"
                               "        with the tag of the most recent command, optionally adjusted by\n"
                               "        subtracting the tag offset.\n"},
                      HelpCase{"t",
                               "Tag [<newtag>]\n"
                               "        Command tags are normally assigned by the tester\n"
                               "        and reported when the command is sent.  Tag values\n"
                               "        start at 1 and increment.  This command is used to\n"
                               "        set the tag value for the next command.  The tag\n"
                               "        value will again increment after that next command.\n"
                               "\n"
                               "        The next tag to be used will always be reported.  By\n"
                               "        entering the Tag operation without a newtag, one may\n"
                               "        determine the next tag to be used.\n"},
                      HelpCase{"sst",
                               "Set_Hoxi_Timeout [<asyncPutTimeoutMs> [<asyncGetTimeoutMs>]]\n"
                               "        When debugging, it may be appropriate to modify timeout\n"
                               "        values.  Normally, these are set to 1s, and that value\n"
                               "        will be restored if the sst command is entered with no\n"
                               "        parameters.  To set INFINITE timeouts, use 0xffffffff.\n"},
                      HelpCase{"esb",
                               "Enable_Hoxi_Break [<enableIf1_disableIf0>]\n"
                               "        HOXI is able to generate debug breaks on any error. Normally,\n"
                               "        this facility is turned off.  If this command is entered with\n"
                               "        no parameter, the breaks will be disabled.\n"},
                      HelpCase{"q",
                               "Quit\n"
                               "        This operation exits the tester.\n"},
                      HelpCase{"brst",
                               "BusReSeT\n"
                               "        This operation forces a 1394 bus reset.\n"},
                      HelpCase{"nopl",
                               "NOPL\n"
                               "        The NOPLoop operation loops sending NOP commands and receiving\n"
                               "        command execution status until either a keystroke or an error\n"
                               "        is found.\n"},
                      HelpCase{"nop",
                               "NOP\n"
                               "        The NOP operation sends a NOP command to the scanner.\n"},
                      HelpCase{"rst",
                               "ReSeT\n"
                               "        The ReSeT operation sends a reset command to the scanner.\n"
                               "        This is not the same as resetting the 1394 bus.\n"},
                      HelpCase{"rstl",
                               "ReSeTLoop\n"
                               "        The ReSeTLoop operation will continuously repeat a sequence of\n"
                               "        operations verifying the ability of the scanner to accept a\n"
                               "        NOP command, then executing a reset command and related Hoxi\n"
                               "        operations.  This will loop until a key is struck or an error\n"
                               "        occurs.  It is a very special purpose test.\n"},
                      HelpCase{"ver",
                               "FileVersion\n"
                               "        Retrieves file versions of TamTest and HOXI DLL.\n"}));

}  // namespace
}  // namespace console
