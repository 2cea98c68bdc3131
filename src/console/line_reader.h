// Reads the next line, from the console or from the running script, and shows the prompt and pending status reports
// meanwhile. Main thread only.
#pragma once

#include <cstddef>
#include <string>

namespace console {

// A line and its zero: a longer line is split, the rest comes as the next line.
inline constexpr size_t kLineSize = 256;

// What the operator sees before a line typed at the console; one more ">" for each level of script.
inline constexpr char kConsolePrompt[] = "> ";

// Fills line, an array of kLineSize characters, with the next line up to its comment or newline. Empty when there is
// nothing to run: at the end of a script, or when the input has ended (which, unless it is a terminal, also quits).
void readLine(char* line);

// Reads one line of the console's input as the answer to a question that has been printed. Returns it without its line
// end, cut to what a line holds; the rest of a longer one is gone. Empty when the input has ended.
std::string readReply(const char* question);

}  // namespace console
