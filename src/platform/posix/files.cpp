#include "platform/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace platform {

namespace {

struct Freed {
    void operator()(char* text) const { std::free(text); }
};

bool replaceRegular(const std::string& fresh, const std::string& name) {
    struct stat old {};
    const std::unique_ptr<char, Freed> target(::realpath(name.c_str(), nullptr));
    return target && ::access(target.get(), W_OK) == 0 && ::stat(target.get(), &old) == 0 &&
           ::chmod(fresh.c_str(), old.st_mode & 0777) == 0 && std::rename(fresh.c_str(), target.get()) == 0;
}

}  // namespace

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

bool replaceFile(const std::string& fresh, const std::string& name) {
    switch (kindOf(name)) {
        case FileKind::kNone:
            return std::rename(fresh.c_str(), name.c_str()) == 0;
        case FileKind::kRegular:
            return replaceRegular(fresh, name);
        case FileKind::kFolder:
        case FileKind::kOther:
            break;
    }
    return false;
}

}  // namespace platform
