#include "platform/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace platform {

namespace {

constexpr int kMostAttempts = 100;
constexpr int kMostLinks = 40;  // as many as the system follows

struct Freed {
    void operator()(char* text) const { std::free(text); }
};

// With the slash; empty when the name has no folder.
std::string folderOf(const std::string& name) {
    return name.substr(0, name.rfind('/') + 1);
}

// Where a link leads to, whether there is something or not; empty when the name is no link.
std::string targetOf(const std::string& name) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(name.c_str(), target.data(), target.size());
    if (length <= 0) {
        return "";
    }
    const std::string text(target.data(), static_cast<size_t>(length));
    return text.front() == '/' ? text : folderOf(name) + text;
}

// The name with all links followed, those to files that are not there yet as well.
std::string resolved(std::string name) {
    for (int links = 0; links < kMostLinks; ++links) {
        const std::unique_ptr<char, Freed> real(::realpath(name.c_str(), nullptr));
        if (real) {
            return real.get();
        }
        const std::string target = targetOf(name);
        if (target.empty()) {
            break;
        }
        name = target;
    }
    return name;
}

// What a file is made with.
struct Permissions {
    mode_t mode = 0666;
    bool areExact = false;  // those of the file that it replaces; otherwise the user's mask counts as well
};

// None when the file must not be written.
std::optional<Permissions> permissions(const std::string& name) {
    struct stat status {};
    if (name.empty() || name.back() == '/') {
        return std::nullopt;
    }
    if (::stat(name.c_str(), &status) != 0) {
        return errno == ENOENT ? std::optional(Permissions{}) : std::nullopt;
    }
    if (!S_ISREG(status.st_mode) || ::access(name.c_str(), W_OK) != 0) {
        return std::nullopt;
    }
    return Permissions{status.st_mode & 0777, true};
}

// A short name in the folder of the file, whatever the length of its own.
std::string temporaryNameFor(const std::string& name) {
    static std::atomic<unsigned> counter{0};
    return folderOf(name) + ".new-" + std::to_string(::getpid()) + "-" + std::to_string(counter++);
}

// Has make(temporary name) give it to a file, until it is one that no other file has. The result of make, and an empty
// name when it fails.
template <typename Make>
int withTemporaryName(const std::string& name, std::string& temporary, Make make) {
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        temporary = temporaryNameFor(name);
        const int result = make(temporary.c_str());
        if (result >= 0) {
            return result;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    temporary.clear();
    return -1;
}

// Where the system shows an open file, from where it can be opened again and be given a name.
std::string pathOf(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

// A file without a name, which is gone when the process ends before it has one; -1 where there is no such thing.
int openUnnamed(const std::string& name, mode_t mode) {
    const std::string folder = folderOf(name);
    const int file = ::open(folder.empty() ? "." : folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, mode);
    if (file >= 0 && ::access(pathOf(file).c_str(), F_OK) != 0) {
        ::close(file);
        return -1;
    }
    return file;
}

int openNamed(const std::string& name, std::string& temporary, mode_t mode) {
    return withTemporaryName(name, temporary, [mode](const char* path) {
        return ::open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    });
}

}  // namespace

NewFile::NewFile(const std::string& name) : name_(resolved(name)) {
    const std::optional<Permissions> wanted = permissions(name_);
    if (!wanted) {
        return;
    }
    file_ = openUnnamed(name_, wanted->mode);
    path_ = pathOf(file_);
    if (file_ < 0) {
        file_ = openNamed(name_, temporaryName_, wanted->mode);
        path_ = temporaryName_;
    }
    // Where permissions are not kept there are none to be lost.
    if (file_ >= 0 && wanted->areExact && ::fchmod(file_, wanted->mode) != 0) {
        errno = 0;
    }
}

NewFile::~NewFile() {
    if (file_ >= 0) {
        ::close(file_);
    }
    if (!temporaryName_.empty()) {
        ::unlink(temporaryName_.c_str());
    }
}

bool NewFile::keep() {
    if (file_ >= 0 && temporaryName_.empty()) {
        withTemporaryName(name_, temporaryName_, [this](const char* path) {
            return ::linkat(AT_FDCWD, path_.c_str(), AT_FDCWD, path, AT_SYMLINK_FOLLOW);
        });
    }
    if (temporaryName_.empty() || std::rename(temporaryName_.c_str(), name_.c_str()) != 0) {
        return false;
    }
    temporaryName_.clear();
    return true;
}

}  // namespace platform
