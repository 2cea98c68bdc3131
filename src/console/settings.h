// Small operations that scripts use to pace themselves and to control the tester.
#pragma once

#include <cstddef>
#include <cstdint>

namespace console {

// Results of getVersion that FileVersion tells apart.
inline constexpr uint32_t kNoVersion = 9000;
inline constexpr uint32_t kVersionBufferTooSmall = 9001;

// Formats the program's version as four numbers joined by points into text, size bytes with the zero.
uint32_t getVersion(char* text, size_t size);

// Operations.
void keyboardEnable();
void wait();
void eventWait();
void captureWait();
void tag();
void fileVersion();

}  // namespace console
