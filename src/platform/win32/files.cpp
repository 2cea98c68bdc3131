#include "platform/files.h"

#include <windows.h>

namespace platform {

bool replaceFile(const std::string& fresh, const std::string& name) {
    return MoveFileExA(fresh.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

}  // namespace platform
