// Which file may be uploaded where: by the end of its name, and for scanner code by the scanner's model. Pure.
#pragma once

#include <string_view>

namespace operations {

// True when the name is longer than the extension and ends in it, ignoring case.
bool hasExtension(std::string_view name, std::string_view extension);

// What the name of scanner code must look like for a model.
struct CodeFileRule {
    std::string_view model;
    std::string_view tailStart;  // how the last tailLength characters begin
    size_t tailLength;
    const char* form;  // what to tell who gave another file
};

// The rule that the name breaks, or null when it suits the model or nothing is known of the model.
const CodeFileRule* brokenCodeFileRule(std::string_view model, std::string_view name);

}  // namespace operations
