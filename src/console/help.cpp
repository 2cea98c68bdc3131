#include "console/help.h"

#include "console/operation_table.h"
#include "console/output.h"
#include "console/text.h"
#include "console/tokenizer.h"

namespace console {
namespace {

constexpr int kNamesInRow = 8;
constexpr int kNameWidth = 8;

void showGeneralHelp() {
    output(
        "Tamsel Scanner/HOXI tester:\n\n"
        "The tester provides internal operations and scanner commands.\n"
        "The available operations are listed below.\n\n");
    int index = 0;
    for (const Operation* row = kOperations; row->longName != nullptr; ++row, ++index)
        output("%s%-*s", index % kNamesInRow == 0 ? "\n" : "", kNameWidth, row->shortName);
    output(
        "\n\nFor more information about an individual operation, type help or\n"
        "? followed by the operation name.  For a more detailed list of the\n"
        "commands, including their long form names and parameters, type help\n"
        "or ? followed by an asterisk (*).\n\n"
        "Any line beginning with a semicolon (;) is ignored, i.e., treated as\n"
        "a comment.  Blank lines are also ignored.\n");
}

}  // namespace

const Operation* findOperation(const char* word) {
    for (const Operation* row = kOperations; row->longName != nullptr; ++row)
        if (equalIgnoringCase(row->longName, word) || equalIgnoringCase(row->shortName, word))
            return row;
    return nullptr;
}

void showHelp() {
    const char* word = nextArgument(kOptional);
    if (word == nullptr) {
        showGeneralHelp();
        return;
    }
    if (word[0] == '*' && word[1] == '\0') {
        for (const Operation* row = kOperations; row->longName != nullptr; ++row)
            output("%s", row->syntax);
        return;
    }
    const Operation* row = findOperation(word);
    if (row != nullptr)
        output("%s%s", row->syntax, row->help);
    else
        output("Operation %s does not exist in this tester.\n", word);
}

}  // namespace console
