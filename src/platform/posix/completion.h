// Which words of a list a typed beginning may mean, ignoring case.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct Completion {
    std::string text;                     // what to put in place of the typed beginning
    std::vector<const char*> candidates;  // the words that begin like it, in the list's order, none twice
};

// One candidate gives that word and a blank; several give what they have in common, in the spelling of the first.
// Without a candidate the text is the typed beginning. Words that differ in case alone are one word.
Completion completeWord(std::string_view typed, std::span<const char* const> words);

}  // namespace platform
