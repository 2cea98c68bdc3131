#include "console/dispatcher.h"

#include "console/console_state.h"
#include "console/help.h"
#include "console/operation_table.h"
#include "console/output.h"
#include "console/scripts.h"
#include "console/tokenizer.h"

namespace console {
namespace {

void runOperation(const Operation& operation) {
    operation.handler();
    if (state.missingParameter == 0)
        return;
    output("TamTest: Missing parameter - syntax for %s(%s) is:\n", operation.longName, operation.shortName);
    output("%s", operation.syntax);
    output("For more information, enter \"? %s\"\n", operation.shortName);
    state.missingParameter = 0;
}

}  // namespace

void dispatchLine(char* line) {
    beginLine(line);
    const char* word = nextWord();
    if (word != nullptr)
        word = substituteParameter(word);
    if (word == nullptr || *word == ';')
        return;
    if (const Operation* operation = findOperation(word))
        runOperation(*operation);
    else if (startScript(word) == ScriptStart::notOpened)
        output("TamTest: Invalid command - %s\n", word);
}

}  // namespace console
