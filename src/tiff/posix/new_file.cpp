#include "tiff/posix/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace tifffile {
namespace {

constexpr int kMostAttempts = 100;

struct Freed {
    void operator()(char* text) const { std::free(text); }
};

// The name with all links followed; as it is when there is no such file yet.
std::string resolved(const char* fileName) {
    const std::unique_ptr<char, Freed> real(::realpath(fileName, nullptr));
    return real ? real.get() : fileName;
}

// The permissions for a file of this name, those of the file that it replaces; none when it must not be written.
std::optional<mode_t> permissions(const std::string& name) {
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0)
        return errno == ENOENT ? std::optional<mode_t>(0666) : std::nullopt;
    if (!S_ISREG(status.st_mode) || ::access(name.c_str(), W_OK) != 0)
        return std::nullopt;
    return status.st_mode & 0777;
}

// A short name in the folder of the file, whatever the length of its own.
std::string temporaryName(const std::string& name) {
    static std::atomic<unsigned> counter{0};
    const size_t slash = name.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : name.substr(0, slash + 1);
    return folder + ".ovktiff-" + std::to_string(::getpid()) + "-" + std::to_string(counter++);
}

// Fills in the temporary name; -1 and an empty name when no file can be opened.
int openBeside(const std::string& name, std::string& temporary) {
    const std::optional<mode_t> mode = permissions(name);
    if (!mode || name.empty() || name.back() == '/')
        return -1;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        temporary = temporaryName(name);
        const int number = ::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, *mode);
        if (number >= 0)
            return number;
        if (errno != EEXIST)
            break;
    }
    temporary.clear();
    return -1;
}

}  // namespace

NewFile::NewFile(const char* fileName) : name_(resolved(fileName)), file_(openBeside(name_, temporaryName_)) {}

NewFile::~NewFile() {
    if (!temporaryName_.empty())
        ::unlink(temporaryName_.c_str());
}

bool NewFile::keep() {
    if (!file_.close() || std::rename(temporaryName_.c_str(), name_.c_str()) != 0)
        return false;
    temporaryName_.clear();
    return true;
}

}  // namespace tifffile
