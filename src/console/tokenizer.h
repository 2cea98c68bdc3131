// The words of the line being run. Words are separated by blank, tab and newline; there is no quoting. In a script a
// word %1 to %10 stands for that parameter of the script. Main thread only.
#pragma once

#include <cstdint>
#include <span>

namespace console {

inline constexpr int kMandatory = 0;
inline constexpr int kOptional = 1;

// Makes the line the one being run; it is cut into words in place and stays the caller's.
void beginLine(char* line);

// The next word as it stands, or null at the end of the line.
char* nextWord();

// Parameter n of the running script when the word reads %n with n from 1 to 10; null when it has no such parameter.
// Any other word, and every word outside scripts, is given back as it is.
const char* substituteParameter(const char* word);

// The next argument for a handler, or null. Sets the missing-parameter flag when a mandatory one is not there and
// clears it otherwise. The text stays valid until the line or the script it came from ends.
const char* nextArgument(int optional);

// Numbers as the operations take them: decimal, 0x hexadecimal or leading-0 octal; what is no number reads as 0, a
// number too wide is cut to the width. The same on every platform, whatever its long is.
uint32_t toUnsigned(const char* word);
int64_t toSigned(const char* word);

// Fills in the next arguments, all of them mandatory and numbers; false at the first one that is missing.
bool nextNumbers(std::span<uint32_t> numbers);

// Where a number or the name of a file may stand: a word that begins with a decimal digit is a number.
bool isNumber(const char* word);

}  // namespace console
