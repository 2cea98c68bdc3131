// Why a command failed: the state of its completion when that is not hoxi::kComplete.
#pragma once

#include <cstdint>

namespace simulator {

inline constexpr int32_t kAborted = 4;       // the program stopped it
inline constexpr int32_t kNoSuchThing = 5;   // there is no such image, reference or command
inline constexpr int32_t kBadParameter = 6;  // a field is missing or has a value that it must not have
inline constexpr int32_t kNoMemory = 7;      // there is no room for an image of this size
inline constexpr int32_t kBusy = 8;          // another capture is under way
inline constexpr int32_t kNotSupported = 9;

}  // namespace simulator
