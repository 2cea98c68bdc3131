#include "console/scripts.h"

#include <cstdio>
#include <string>

#include "console/console_state.h"
#include "console/keyboard_poll.h"
#include "console/output.h"
#include "console/regular_file.h"
#include "console/tokenizer.h"

namespace console {
namespace {

std::FILE* openScript(const char* name) {
    File file = openRegularFile(name, "rb");
    if (!file)
        file = openRegularFile(std::string(name) + ".scr", "rb");
    if (file)
        rewindText(file.get());
    return file.release();
}

// Called with the new script's level already current, so that a %n among the words is the new script's own.
void collectParameters() {
    for (auto& parameter : state.levels[state.depth].parameters) {
        const char* word = nextArgument(kOptional);
        parameter = word != nullptr ? std::optional<std::string>(word) : std::nullopt;
    }
}

void leaveLevel() {
    ScriptLevel& level = state.levels[state.depth];
    std::fclose(state.script);
    state.script = level.enclosingInput;
    state.looping = level.enclosingLooping;
    level = ScriptLevel{};
    --state.depth;
}

void runAs(const Looping& looping) {
    const char* word = nextArgument(kMandatory);
    if (word == nullptr)
        return;
    const std::string name = word;
    const ScriptStart start = startScript(name.c_str());
    if (start == ScriptStart::notOpened)
        output("TamTest: Failed to open script %s\n", name.c_str());
    if (start == ScriptStart::started)
        state.looping = looping;
}

void printBanner() {
    const std::string colons(state.depth, ':');
    consolePrint("\n%s\n%s COMPLETED LOOP %u OF %u\n%s\n", colons.c_str(), colons.c_str(), state.looping.iteration,
                 state.looping.count, colons.c_str());
}

}  // namespace

ScriptStart startScript(const char* name) {
    std::FILE* file = openScript(name);
    if (file == nullptr)
        return ScriptStart::notOpened;
    if (state.depth == kMaxScriptDepth) {
        std::fclose(file);
        output("TamTest: Exceeded maximum depth of nested scripts\n");
        state.quit = 1;
        return ScriptStart::tooDeep;
    }
    ++state.depth;
    ScriptLevel& level = state.levels[state.depth];
    level.enclosingInput = state.script;
    level.enclosingLooping = state.looping;
    state.script = file;
    state.looping = Looping{};
    collectParameters();
    return ScriptStart::started;
}

int scriptByte() {
    constexpr int kEndMark = 0x1A;  // an old mark of the end of a text
    const int byte = std::getc(state.script);
    if (byte == kEndMark) {
        std::fseek(state.script, 0, SEEK_END);
        return EOF;
    }
    if (byte != '\r')
        return byte;
    const int next = std::getc(state.script);
    if (next == '\n')
        return next;
    std::ungetc(next, state.script);
    return byte;
}

void endOfScript() {
    Looping& looping = state.looping;
    if (looping.loop != 0 && keyStruck()) {
        looping.loop = 0;
        if (readStruckKey() == platform::kEscapeKey) {
            leaveAllScripts();
            output("\n");
            return;
        }
    }
    if (looping.loop != 0 && looping.count != 0) {
        ++looping.iteration;
        if (looping.iteration == looping.count)
            looping.loop = 0;
        printBanner();
    }
    if (looping.loop != 0)
        rewindText(state.script);
    else
        leaveLevel();
    output("\n");
}

void leaveAllScripts() {
    while (state.depth > 0)
        leaveLevel();
    state.looping = Looping{};
}

void runScript() {
    runAs({.loop = 0, .iteration = 0, .count = 0});
}

void loopScript() {
    runAs({.loop = 1, .iteration = 0, .count = 0});
}

void loopScriptCounted() {
    const char* count = nextArgument(kMandatory);
    if (count != nullptr)
        runAs({.loop = 1, .iteration = 0, .count = toUnsigned(count)});
}

void escapeScripts() {
    leaveAllScripts();
}

}  // namespace console
