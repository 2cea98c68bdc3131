// All that the console remembers between lines, in one place. Main thread only, but for the error flag and the log.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <optional>
#include <string>

namespace console {

inline constexpr int kMaxScriptDepth = 4;
inline constexpr int kScriptParameters = 10;

// How the running script repeats.
struct Looping {
    int loop = 0;            // 1: start again at the end of the file
    uint32_t iteration = 0;  // completed passes
    uint32_t count = 0;      // passes to make, 0 without limit
};

// One level of nesting: what its script was given, and what to go back to when it ends.
struct ScriptLevel {
    std::FILE* enclosingInput = nullptr;
    std::array<std::optional<std::string>, kScriptParameters> parameters;
    Looping enclosingLooping;
};

struct ConsoleState {
    int quit = 0;              // 1: the loop ends after the current line
    int missingParameter = 0;  // 1: the last argument asked for was mandatory and not there
    // The last failing result, 0 for none. Status and video threads set it too: a plain word that needs no lock.
    std::atomic<uint32_t> errorFlag{0};
    uint32_t keyboardEnabled = 1;  // 0: waits and loops never look at the keyboard

    char* cursor = nullptr;  // the rest of the line being run

    std::FILE* script = nullptr;  // the script being read, none at the console
    int depth = 0;                // 0 is the console
    std::array<ScriptLevel, kMaxScriptDepth + 1> levels;
    Looping looping;
    int heldByte = -1;  // a byte of console input read ahead, -1 for none

    std::mutex logMutex;  // other threads print too while the main thread opens and closes the log
    std::FILE* log = nullptr;
    std::string logName;  // empty when the log cannot be opened again under its name
};

extern ConsoleState state;

// Puts everything back to its start values, closing what is open.
void resetConsoleState();

inline void flagError(uint32_t result) {
    state.errorFlag.store(result, std::memory_order_relaxed);
}
inline bool errorFlagged() {
    return state.errorFlag.load(std::memory_order_relaxed) != 0;
}

}  // namespace console
