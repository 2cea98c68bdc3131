// The built tester as a person starts it, with a simulated scanner of the test's choice.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/child_process.h"
#include "support/files.h"

namespace acceptance {

inline constexpr char kTester[] = TAMTEST_PROGRAM;
inline constexpr char kFound[] = "TamTest: HoxiInitialize found 1 scanners\n";

// The path of a scenario of the project.
std::string scenario(std::string_view name);

// Runs the tester with this standard input to its end.
support::RunResult runTester(const std::string& input, support::RunOptions options = {});

// The output with every date line replaced by "<date>".
std::string withoutDates(const std::string& text);

}  // namespace acceptance
