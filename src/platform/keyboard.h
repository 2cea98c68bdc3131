// The operator's keyboard: single keys without Enter, looked at by waits and loops. When standard input is not a
// terminal there is no keyboard and no key is ever waiting. Main thread only.
#pragma once

namespace platform {

inline constexpr int kEscapeKey = 27;

// True when a key is waiting, and when the terminal is gone, so that a wait for a key ends.
bool keyWaiting();

// Reads the key that is waiting; blocks when there is none. Returns its character code: 0 for a key without one
// (cursor and function keys), kEscapeKey without a keyboard and when the terminal is gone.
int readKey();

}  // namespace platform
