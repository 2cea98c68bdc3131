// Results of the simulated library's own; those with a meaning for every program stand in hoxi/hoxi_codes.h.
#pragma once

#include "hoxi/hoxi.h"

namespace simulator {

inline constexpr HoxiResult kOk = 0;
inline constexpr HoxiResult kBadArgument = 9001;        // a null pointer, or a buffer of no size
inline constexpr HoxiResult kNotOpen = 9002;            // HoxiInitialize has not been called
inline constexpr HoxiResult kBadScenario = 9003;        // the scenario file cannot be used
inline constexpr HoxiResult kNothingToTransfer = 9005;  // the channel has nothing to give and awaits nothing
inline constexpr HoxiResult kAlreadyOpen = 9006;        // HoxiInitialize without a HoxiTerminate in between
inline constexpr HoxiResult kNoSuchScanner = 9007;      // scanner index out of range
inline constexpr HoxiResult kBadPacket = 9008;          // shorter than its header, or than its header says

inline constexpr HoxiResult kBadBlock = 9010;  // does not go with the transfer that was announced

}  // namespace simulator
