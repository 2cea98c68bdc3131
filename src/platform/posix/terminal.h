// The terminal on standard input: its modes, and the bytes that come from it. While it is open it delivers keys
// without Enter and without echo; on every way out of the process, signals included, it is put back as it was found.
// Main thread only.
#pragma once

#include <string_view>

namespace platform {

inline constexpr int kTerminalGone = -1;
inline constexpr int kTerminalInterrupted = -2;

// Notes the modes to be put back. False when standard input is no terminal.
bool openTerminal();
void closeTerminal();
bool terminalOpen();

// False when a shell has given the terminal to somebody else.
bool terminalInForeground();

// True when the line is broken, the window closed or the like: no byte will ever come.
bool terminalGone();

// Sets the modes of single keys, also again after somebody else has changed them. A process in the background leaves
// the modes alone until it is continued in the foreground.
void takeKeyModes();

// True when a byte is there or the terminal is gone. What is typed while the process is in the background is meant
// for others, so nothing waits then.
bool terminalByteWaiting();

// The next byte, 0 to 255; blocks when there is none. kTerminalGone at the end of the terminal, from then on always;
// kTerminalInterrupted when the process was stopped and continued meanwhile, so that the screen is no longer ours.
int readTerminalByte();

// Hands bytes back: they are the next that readTerminalByte returns.
void returnTerminalBytes(std::string_view bytes);

}  // namespace platform
