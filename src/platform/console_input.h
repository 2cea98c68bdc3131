// The input: where the next console line comes from. That is standard input, whatever it is: a terminal with line
// editing, history and completion, or a pipe or file read as it stands. Main thread only.
#pragma once

#include <span>

namespace platform {

inline constexpr int kInputEnd = -1;    // a pipe or file has ended, or the terminal is gone
inline constexpr int kInputEmpty = -2;  // the operator ended an empty line at the terminal; more may come

// Prepares standard input; at a terminal, keys are seen from now on without Enter. The texts are kept by address.
// prompt is what the program has printed before the line to be edited; words complete the line's first word.
// The terminal is put back by closeConsoleInput, and when the process is broken off or, on POSIX, ended in any other
// way.
void openConsoleInput(const char* prompt, std::span<const char* const> words);
void closeConsoleInput();

// What the program has printed before the next line to be edited, kept by address until it is set again.
void setInputPrompt(const char* prompt);

// True when reading would begin at once: a key has been struck, or a pipe or file holds bytes or has ended.
bool inputReady();

// The next byte of the input, 0 to 255, or kInputEnd or kInputEmpty. At a terminal a whole line is edited first.
int readInputByte();

}  // namespace platform
