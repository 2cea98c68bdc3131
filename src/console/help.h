// Finding operations by name and telling about them.
#pragma once

namespace console {

struct Operation;

// The first row whose long or short name equals the word, ignoring case; null when there is none.
const Operation* findOperation(const char* word);

// Operation.
void showHelp();

}  // namespace console
