#include "console/help.h"

#include "console/operation_table.h"
#include "support/tester_test.h"

namespace console {
namespace {

class Help : public support::TesterTest {};

TEST_F(Help, HelpInAnyCaseAndTheQuestionMarkAreTheSame) {
    const std::string general = type("help");
    EXPECT_EQ(type("HELP"), general);
    EXPECT_EQ(type("Help"), general);
    EXPECT_EQ(type("?"), general);
}

TEST_F(Help, GeneralHelpListsShortNamesEightToARow) {
    const std::string text = type("help");
    const std::string start =
        "Tamsel Scanner/HOXI tester:\n\nThe tester provides internal operations and scanner commands.\n"
        "The available operations are listed below.\n\n"
        "\n?       s       ls      lsc     scnr    esc     kbhe    blog    "
        "\nelog    rlog    w       ew      cw      t       sst     esb     \nq       ";
    EXPECT_EQ(text.substr(0, start.size()), start);
    const std::string end =
        "\nsdfc    rdwr    fpgaw   fpgar   veskr   histl   "
        "\n\nFor more information about an individual operation, type help or\n"
        "? followed by the operation name.  For a more detailed list of the\n"
        "commands, including their long form names and parameters, type help\n"
        "or ? followed by an asterisk (*).\n\n"
        "Any line beginning with a semicolon (;) is ignored, i.e., treated as\n"
        "a comment.  Blank lines are also ignored.\n";
    ASSERT_GE(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(Help, AsteriskListsEverySyntaxTextAndNothingElse) {
    std::string all;
    int rows = 0;
    for (; kOperations[rows].longName != nullptr; ++rows)
        all += kOperations[rows].syntax;
    EXPECT_EQ(type("help *"), all);
    EXPECT_EQ(rows, 118);
}

TEST_F(Help, OperationsHelpIsItsSyntaxAndItsText) {
    const std::string quit = "Quit\n        This operation exits the tester.\n";
    EXPECT_EQ(type("help quit"), quit);
    EXPECT_EQ(type("? q"), quit);
    EXPECT_EQ(type("? Q extra"), quit);
}

TEST_F(Help, HelpTellsAboutItself) {
    EXPECT_EQ(type("? ?"),
              "help [<operation>]\n"
              "        The help command is used to show general information about\n"
              "        the tester, or to show details about a particular tester\n"
              "        operation.  If no operation name is entered, the general\n"
              "        information is shown.\n");
}

TEST_F(Help, UnknownOperationDoesNotExist) {
    EXPECT_EQ(type("help StatusDelay"), "Operation StatusDelay does not exist in this tester.\n");
    EXPECT_EQ(type("help **"), "Operation ** does not exist in this tester.\n");
}

TEST_F(Help, FindsTheFirstRowByEitherName) {
    EXPECT_EQ(findOperation("FREE_IMAGE"), &kOperations[29]);
    EXPECT_EQ(findOperation("fi"), &kOperations[29]);
    EXPECT_EQ(findOperation("f"), nullptr);
    EXPECT_EQ(findOperation(""), nullptr);
}

}  // namespace
}  // namespace console
