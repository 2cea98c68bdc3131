#include "console/output.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>

#include "console/console_state.h"
#include "console/tokenizer.h"

namespace console {
namespace {

// Longer names would not fit where the name is kept for Reset_LOG.
constexpr size_t kMaxRememberedName = 255;

int print(std::FILE* stream, const char* format, va_list arguments) {
    const int count = std::vfprintf(stream, format, arguments);
    std::fflush(stream);
    return count;
}

void closeLog() {
    if (state.log != nullptr)
        std::fclose(state.log);
    state.log = nullptr;
}

}  // namespace

int output(const char* format, ...) {
    std::lock_guard lock(state.logMutex);
    va_list arguments;
    va_start(arguments, format);
    int count = print(stdout, format, arguments);
    va_end(arguments);
    if (state.log != nullptr) {
        va_start(arguments, format);
        count = print(state.log, format, arguments);
        va_end(arguments);
    }
    return count;
}

int consolePrint(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int count = print(stdout, format, arguments);
    va_end(arguments);
    return count;
}

void beginLog() {
    const char* name = nextArgument(kMandatory);
    if (name == nullptr)
        return;
    bool opened = false;
    {
        std::lock_guard lock(state.logMutex);
        closeLog();
        state.logName.clear();
        state.log = std::fopen(name, "w");
        opened = state.log != nullptr;
        const std::string text = name;
        if (opened && text.size() <= kMaxRememberedName)
            state.logName = text;
    }
    if (!opened)
        output("TamTest: Failed to open log file %s\n", name);
}

void endLog() {
    std::lock_guard lock(state.logMutex);
    closeLog();
    state.logName.clear();
}

void resetLog() {
    std::string name;
    bool opened = false;
    {
        std::lock_guard lock(state.logMutex);
        if (state.log == nullptr)
            return;
        closeLog();
        name = state.logName;
        if (!name.empty())
            state.log = std::fopen(name.c_str(), "w");
        opened = state.log != nullptr;
        if (!opened)
            state.logName.clear();
    }
    if (name.empty())
        output("TamTest: Cannot reopen log file\n");
    else if (!opened)
        output("TamTest: Failed to reopen log file %s\n", name.c_str());
}

}  // namespace console
