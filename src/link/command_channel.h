// The one way by which commands leave the tester, and the operations that set up the library's command path. Nothing
// here waits: completion and results arrive as status reports. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>

namespace scannerlink {

// The words that begin every command packet, little-endian; the payload follows packed.
struct CommandHeader {
    uint32_t code;
    uint32_t tag;
    uint32_t size;  // payload bytes, as the scanner expects them stated
};
static_assert(sizeof(CommandHeader) == 12);

// The header of the next command: takes the next tag, which is used up whether the command is sent or not.
CommandHeader nextCommand(uint32_t code, uint32_t size = 0);

// Hand one packet of length bytes, header first, to the library and print the echo line unless quiet. Return 1, or 0
// when the library refused it; then the failure is printed and its result is in the error flag.
int sendCommandToScanner(uint32_t scanner, const void* packet, uint32_t length, uint32_t resultWord = 0);
int sendCommand(const void* packet, uint32_t length, uint32_t resultWord = 0);

// Operations.
void setTimeouts();
void enableBreak();
void busReset();

}  // namespace scannerlink
