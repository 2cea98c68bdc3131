// Waiting for a particular report. Every wait counts time in 10 ms passes of the status check that showed nothing, so
// a wait that is busy showing reports lasts longer than its time-out, milliseconds; 0 is no time-out. Each returns 1
// when what was waited for has come, else 0. A report stays in its slot: a wait for what has come already is over at
// once. Main thread only.
#pragma once

#include <cstdint>

namespace scannerlink {

// A report of the code with the tag; 0 at once when its state is another.
int waitForStatusOf(uint32_t scanner, uint32_t code, int32_t reportState, uint32_t tag, uint32_t timeoutMs);
int waitForStatus(uint32_t code, int32_t reportState, uint32_t tag, uint32_t timeoutMs);

// The command status "complete" of the tag; 0 at once when the command failed.
int waitForCommandCompleteOf(uint32_t scanner, uint32_t tag, uint32_t timeoutMs);
int waitForCommandComplete(uint32_t tag, uint32_t timeoutMs);

// A transfer report of the code with the tag; 0 at once when its first word is not the value.
int waitForConfirmationOf(uint32_t scanner, uint32_t code, uint32_t value, uint32_t tag, uint32_t timeoutMs);
int waitForConfirmation(uint32_t code, uint32_t value, uint32_t tag, uint32_t timeoutMs);

// A capture progress report with the tag; 0 at once when its progress code is another.
int waitForCaptureProgressOf(uint32_t scanner, uint32_t progress, uint32_t tag, uint32_t timeoutMs);
int waitForCaptureProgress(uint32_t progress, uint32_t tag, uint32_t timeoutMs);

// The report of every scanner that it has come back from a reset.
int waitForReset(uint32_t timeoutMs);

}  // namespace scannerlink
