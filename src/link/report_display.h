// Showing a status report in its decoded form. Main thread only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/report.h"

namespace scannerlink {

// Prints the report unless quiet. Returns 1, but 0 for a text message, which does not make the prompt come again.
int displayReport(uint32_t scanner, const Report& report);

// A scanner's text message as it is shown: "%%" reads as one per-cent sign, any other directive as it stands.
std::string messageText(std::string_view text);

}  // namespace scannerlink
