// Comparing names and words without regard to case; letters are those of ASCII. Pure.
#pragma once

#include <string_view>

namespace console {

bool equalIgnoringCase(std::string_view left, std::string_view right);

}  // namespace console
