// Reads the next line, from the console or from the running script, and shows the prompt and pending status reports
// meanwhile. Main thread only.
#pragma once

#include <cstddef>

namespace console {

// A line and its zero: a longer line is split, the rest comes as the next line.
inline constexpr size_t kLineSize = 256;

// What the operator sees before a line typed at the console; one more ">" for each level of script.
inline constexpr char kConsolePrompt[] = "> ";

// Fills line, an array of kLineSize characters, with the next line up to its comment or newline. Empty when there is
// nothing to run: at the end of a script, or when the input has ended (which, unless it is a terminal, also quits).
void readLine(char* line);

}  // namespace console
