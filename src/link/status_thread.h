// One thread per scanner pulls status reports out of the library and hands each to the main thread through a mailbox
// of one place: it fills it and does not fetch again before the main thread has emptied it.
#pragma once

#include <cstdint>

namespace scannerlink {

// Empties the mailboxes and starts a thread for every scanner. Ends the process with exit code -1 when the mutex
// that guards the mailboxes cannot be created. Main thread.
void startStatusFetches();

// How long the thread waits between looks at its mailbox, after a fetch with this result: a run of fetches that timed
// out is asked for ever more rarely. Milliseconds.
uint32_t nextPollInterval(uint32_t pollMs, uint32_t fetchResult);

}  // namespace scannerlink
