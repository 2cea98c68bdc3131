// The operations that an operator can type: one constant row each, walked by the dispatcher, help and completion.
// A new operation is one row in table/ and one handler; nothing else knows its name.
#pragma once

namespace console {

// A handler fetches its own arguments with nextArgument() and returns at once at the first missing mandatory one.
struct Operation {
    const char* longName;   // mixed case; its capitals spell the short name, for the reader only
    const char* shortName;  // lower case
    void (*handler)();
    const char* syntax;  // one or more lines, each ending in a newline
    const char* help;    // lines indented by eight blanks, ending in a newline
};

inline constexpr int kOperationCount = 118;

// Ended by an entry of null pointers. Its order is the order of help and of the look-up.
extern const Operation kOperations[kOperationCount + 1];

}  // namespace console
