#include "completion.h"

#include <strings.h>

#include <algorithm>

namespace platform {

namespace {

bool sameLetter(char left, char right) {
    return strncasecmp(&left, &right, 1) == 0;
}

size_t commonLength(std::string_view left, std::string_view right) {
    const auto [end, other] = std::mismatch(left.begin(), left.end(), right.begin(), right.end(), sameLetter);
    return static_cast<size_t>(end - left.begin());
}

}  // namespace

Completion completeWord(std::string_view typed, std::span<const char* const> words) {
    Completion completion{std::string(typed), {}};
    for (const char* word : words) {
        const bool known = std::ranges::any_of(completion.candidates,
                                               [word](const char* other) { return strcasecmp(word, other) == 0; });
        if (commonLength(typed, word) == typed.size() && !known) {
            completion.candidates.push_back(word);
        }
    }
    if (completion.candidates.empty()) {
        return completion;
    }
    completion.text = completion.candidates.front();
    for (const char* candidate : completion.candidates) {
        completion.text.resize(commonLength(completion.text, candidate));
    }
    if (completion.candidates.size() == 1) {
        completion.text += ' ';
    }
    return completion;
}

}  // namespace platform
