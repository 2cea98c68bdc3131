#include "console/tester.h"

#include <string>
#include <vector>

#include "console/console_state.h"
#include "console/dispatcher.h"
#include "console/line_reader.h"
#include "console/operation_table.h"
#include "console/scripts.h"
#include "hoxi/hoxi.h"
#include "link/link_state.h"
#include "link/scanner_link.h"
#include "platform/console_input.h"
#include "video/video_threads.h"

namespace console {
namespace {

// What completion at the terminal knows: the long names, since the short ones are short enough to type.
std::vector<const char*> operationNames() {
    std::vector<const char*> names;
    for (const Operation* row = kOperations; row->longName != nullptr; ++row)
        names.push_back(row->longName);
    return names;
}

// The first argument names a script, the others are its parameters.
void runArguments(int argumentCount, char** arguments) {
    if (argumentCount < 2)
        return;
    std::string line = "script";
    for (int i = 1; i < argumentCount; ++i)
        line.append(" ").append(arguments[i]);
    dispatchLine(line.data());
}

void runLines() {
    char line[kLineSize];
    while (state.quit == 0) {
        readLine(line);
        dispatchLine(line);
        if (errorFlagged()) {
            flagError(0);
            leaveAllScripts();
        }
    }
}

}  // namespace

uint32_t runTester(int argumentCount, char** arguments) {
    static const std::vector<const char*> names = operationNames();
    resetConsoleState();
    scannerlink::state.startVideoThreads = video::startVideoThreads;
    const uint32_t result = scannerlink::initializeLink();
    if (result != 0 || scannerlink::state.scannerCount == 0)
        return result;
    platform::openConsoleInput(kConsolePrompt, names);
    runArguments(argumentCount, arguments);
    runLines();
    resetConsoleState();
    platform::closeConsoleInput();
    return HoxiTerminate();
}

void quit() {
    state.quit = 1;
}

}  // namespace console
