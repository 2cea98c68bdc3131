#include "console/output.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>

#include "console/console_state.h"
#include "console/tokenizer.h"
#include "platform/process.h"

namespace console {
namespace {

// Longer names would not fit where the name is kept for Reset_LOG.
constexpr size_t kMaxRememberedName = 255;

int printOut(const char* format, va_list arguments) {
    const int count = std::vprintf(format, arguments);
    platform::flushOutput();
    return count;
}

int printLog(const char* format, va_list arguments) {
    const int count = std::vfprintf(state.log, format, arguments);
    std::fflush(state.log);
    return count;
}

// Puts another log, or none, in the place of the open one. Opening may take long, so it is done outside the lock.
void replaceLog(std::FILE* log) {
    std::lock_guard lock(state.logMutex);
    if (state.log != nullptr)
        std::fclose(state.log);
    state.log = log;
}

}  // namespace

int output(const char* format, ...) {
    std::lock_guard lock(state.logMutex);
    va_list arguments;
    va_start(arguments, format);
    int count = printOut(format, arguments);
    va_end(arguments);
    if (state.log != nullptr) {
        va_start(arguments, format);
        count = printLog(format, arguments);
        va_end(arguments);
    }
    return count;
}

int consolePrint(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int count = printOut(format, arguments);
    va_end(arguments);
    return count;
}

void beginLog() {
    const char* name = nextArgument(kMandatory);
    if (name == nullptr)
        return;
    endLog();
    std::FILE* log = std::fopen(name, "w");
    if (log == nullptr) {
        output("TamTest: Failed to open log file %s\n", name);
        return;
    }
    replaceLog(log);
    const std::string text = name;
    if (text.size() <= kMaxRememberedName)
        state.logName = text;
}

void endLog() {
    replaceLog(nullptr);
    state.logName.clear();
}

void resetLog() {
    if (state.log == nullptr)
        return;
    const std::string name = state.logName;
    endLog();
    if (name.empty()) {
        output("TamTest: Cannot reopen log file\n");
        return;
    }
    std::FILE* log = std::fopen(name.c_str(), "w");
    if (log == nullptr) {
        output("TamTest: Failed to reopen log file %s\n", name.c_str());
        return;
    }
    replaceLog(log);
    state.logName = name;
}

}  // namespace console
