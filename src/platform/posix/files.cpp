#include "platform/files.h"

#include <cstdio>

namespace platform {

bool replaceFile(const std::string& fresh, const std::string& name) {
    return std::rename(fresh.c_str(), name.c_str()) == 0;
}

}  // namespace platform
