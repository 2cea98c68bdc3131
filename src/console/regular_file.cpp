#include "console/regular_file.h"

#include <sys/stat.h>

namespace console {

// Not through std::filesystem, which does not take names of any bytes everywhere.
File openRegularFile(const std::string& name, const char* mode) {
    struct stat info {};
    const bool regular = stat(name.c_str(), &info) == 0 && S_ISREG(info.st_mode);
    return File(regular ? std::fopen(name.c_str(), mode) : nullptr);
}

}  // namespace console
