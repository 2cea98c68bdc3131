// What the file system does beyond the C library. Names are in the system's own character set and may be any bytes.
// Any thread.
#pragma once

#include <string>

namespace platform {

// Gives a file another name in the same folder, in place of the file that has it. False, and both are as they were,
// when that cannot be done.
bool replaceFile(const std::string& fresh, const std::string& name);

}  // namespace platform
