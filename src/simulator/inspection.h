// What a scanner has kept, for tests: the program has no way to ask for it. The scanner is meant by its place in the
// scenario, from 0, and must exist. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "simulator/local_display.h"

namespace simulator {

// What was uploaded last with this command code, byte for byte; empty when nothing was.
std::vector<uint8_t> flashContents(size_t scanner, uint32_t code);
LocalDisplay localDisplay(size_t scanner);
RemoteDisplay remoteDisplay(size_t scanner);

}  // namespace simulator
