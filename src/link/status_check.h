// The main thread's side of the mailboxes: shows what the status threads have fetched, one report per scanner a
// call. Its 10 ms sleep is the tester's time base. Main thread only.
#pragma once

#include <cstdint>
#include <optional>

#include "link/report.h"

namespace scannerlink {

// What a pass without a report takes, milliseconds: the unit in which all waits count.
inline constexpr uint32_t kPassMs = 10;

// Handles at most one pending report or fetch error per scanner; sleeps 10 ms first when there is no report. Returns
// what displaying the last report gave, 0 when none was shown.
int checkStatus();

// A copy of the latest report of this code, if there is one. Scanners and codes without a slot have none.
std::optional<Report> heldReport(uint32_t scanner, uint32_t code);

// Whether a status thread fetches the scanner's reports: without one nothing more will come.
bool isServed(uint32_t scanner);

// Empties the current scanner's slot for the code, so that a wait sees only what comes from now on.
void discardReport(uint32_t code);

}  // namespace scannerlink
