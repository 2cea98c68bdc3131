// One line edited by the operator at the open terminal: emacs control keys, history, completion of the first word.
// Main thread only.
#pragma once

#include <span>
#include <string>

#include "platform/input_buffers.h"

namespace platform {

// prompt stands before the edited line on the screen already; both are kept by address. False when there is no
// editor to be had; lines are then whatever the terminal itself makes of them.
bool prepareLineEditor(const char* prompt, std::span<const char* const> words);

// What stands before the line from now on, kept by address.
void setLinePrompt(const char* prompt);

// Edits a line of any length. kComplete: line holds it, its newline included. kEmpty: the operator gave the end
// character (Ctrl-D) in an empty line. kGone: the terminal is gone. What is typed beyond the line stays unread.
LineEnd editLine(std::string& line);

}  // namespace platform
