#include "platform/files.h"

#include <sys/stat.h>

#include <cerrno>

namespace platform {

FileKind kindOf(const std::string& name) {
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0) {
        return errno == ENOENT ? FileKind::kNone : FileKind::kOther;
    }
    if (S_ISDIR(status.st_mode)) {
        return FileKind::kFolder;
    }
    return S_ISREG(status.st_mode) ? FileKind::kRegular : FileKind::kOther;
}

bool makeFolder(const std::string& name) {
    return ::mkdir(name.c_str(), 0777) == 0 || kindOf(name) == FileKind::kFolder;
}

}  // namespace platform
