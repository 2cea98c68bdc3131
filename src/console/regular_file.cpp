#include "console/regular_file.h"

#include <cstring>

#include "platform/files.h"

namespace console {

void rewindText(std::FILE* file) {
    constexpr char kMark[] = "\xEF\xBB\xBF";
    char start[sizeof kMark] = {};
    std::rewind(file);
    if (std::fread(start, 1, sizeof kMark - 1, file) != sizeof kMark - 1 || std::strcmp(start, kMark) != 0)
        std::rewind(file);
}

File openRegularFile(const std::string& name, const char* mode) {
    return File(platform::kindOf(name) == platform::FileKind::kRegular ? std::fopen(name.c_str(), mode) : nullptr);
}

}  // namespace console
