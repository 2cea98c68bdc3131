#include "console/tokenizer.h"

#include <cstdlib>
#include <cstring>

#include "console/console_state.h"

namespace console {
namespace {

constexpr char kDelimiters[] = " \t\n";

}  // namespace

void beginLine(char* line) {
    state.cursor = line;
}

char* nextWord() {
    if (state.cursor == nullptr)
        return nullptr;
    char* word = state.cursor + std::strspn(state.cursor, kDelimiters);
    if (*word == '\0') {
        state.cursor = word;
        return nullptr;
    }
    char* end = word + std::strcspn(word, kDelimiters);
    state.cursor = *end == '\0' ? end : end + 1;
    *end = '\0';
    return word;
}

const char* substituteParameter(const char* word) {
    if (state.depth == 0 || *word != '%')
        return word;
    const long number = std::strtol(word + 1, nullptr, 10);
    if (number < 1 || number > kScriptParameters)
        return nullptr;
    const auto& parameter = state.levels[state.depth].parameters[number - 1];
    return parameter ? parameter->c_str() : nullptr;
}

const char* nextArgument(int optional) {
    const char* word = nextWord();
    if (word != nullptr)
        word = substituteParameter(word);
    state.missingParameter = word == nullptr && optional == kMandatory ? 1 : 0;
    return word;
}

uint32_t toUnsigned(const char* word) {
    return static_cast<uint32_t>(std::strtoull(word, nullptr, 0));
}

int64_t toSigned(const char* word) {
    return std::strtoll(word, nullptr, 0);
}

bool nextNumbers(std::span<uint32_t> numbers) {
    for (uint32_t& number : numbers) {
        const char* word = nextArgument(kMandatory);
        if (word == nullptr)
            return false;
        number = toUnsigned(word);
    }
    return true;
}

bool isNumber(const char* word) {
    return *word >= '0' && *word <= '9';
}

}  // namespace console
