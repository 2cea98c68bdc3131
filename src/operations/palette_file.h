// The three kinds of palette file: a BMP picture, numbers as text, or entries as they are sent. Main thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace operations {

// The entries of the file, at least one and at most 256; none after a message.
std::optional<std::vector<uint32_t>> readPaletteFile(const std::string& name);

}  // namespace operations
