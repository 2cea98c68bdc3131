// Dates as the tester writes them everywhere.
#pragma once

#include <string>

namespace console {

// The current local date and time in 24 characters: "Mon Nov 16 05:08:38 2026". A day below 10 has a leading zero, as
// the scanners' hosts write it, so that the same session reads the same on every platform.
std::string dateText();

}  // namespace console
