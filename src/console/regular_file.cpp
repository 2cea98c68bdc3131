#include "console/regular_file.h"

#include "platform/files.h"

namespace console {

File openRegularFile(const std::string& name, const char* mode) {
    return File(platform::kindOf(name) == platform::FileKind::kRegular ? std::fopen(name.c_str(), mode) : nullptr);
}

}  // namespace console
