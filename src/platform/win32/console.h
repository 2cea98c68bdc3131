// The console on standard input: the system edits its lines, keeps their history and whatever is typed ahead. Main
// thread only, but for putConsoleBack.
#pragma once

#include <string>

#include "platform/input_buffers.h"

namespace platform {

// True when standard input is a console; a pipe, a file or nothing is none.
bool consoleOnInput();

// True when standard input was a console when it was taken, and is none any more.
bool consoleGone();

// Makes a console, if there is one, show what the process prints as UTF-8, until it is put back: by putConsoleBack,
// or when the operator breaks the process off.
void takeConsole();
void putConsoleBack();

// The rest of the line being typed, as UTF-8, with a newline when it ends there; very long ones come in pieces.
LineEnd readConsoleText(std::string& text);

}  // namespace platform
