#include "acceptance/tamtest.h"

#include <regex>

namespace acceptance {

std::string scenario(std::string_view name) {
    return std::string(TAMTEST_SOURCE_DIR "/scenarios/").append(name);
}

support::RunResult runTester(const std::string& input, support::RunOptions options) {
    options.input = input;
    return support::runProgram(kTester, options);
}

std::string withoutDates(const std::string& text) {
    static const std::regex date("[A-Z][a-z]{2} [A-Z][a-z]{2} [0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}");
    return std::regex_replace(text, date, "<date>");
}

}  // namespace acceptance
