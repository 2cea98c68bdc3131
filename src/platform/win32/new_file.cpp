#include "platform/new_file.h"

#include <windows.h>

#include <atomic>

#include "platform/files.h"

namespace platform {

namespace {

constexpr int kMostAttempts = 100;

bool mayBeMade(const std::string& name) {
    switch (kindOf(name)) {
        case FileKind::kNone:
            return !name.empty();
        case FileKind::kRegular:
            return (GetFileAttributesA(name.c_str()) & FILE_ATTRIBUTE_READONLY) == 0;
        default:
            return false;
    }
}

// A short name in the folder of the file, whatever the length of its own.
std::string temporaryNameFor(const std::string& name) {
    static std::atomic<unsigned> counter{0};
    const size_t slash = name.find_last_of("\\/:");
    const std::string folder = slash == std::string::npos ? "" : name.substr(0, slash + 1);
    return folder + ".new-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++);
}

// An empty file that was not there before; its name, or none.
std::string makeTemporary(const std::string& name) {
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const std::string temporary = temporaryNameFor(name);
        HANDLE file =
            CreateFileA(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            CloseHandle(file);
            return temporary;
        }
        if (GetLastError() != ERROR_FILE_EXISTS) {
            break;
        }
    }
    return "";
}

}  // namespace

NewFile::NewFile(const std::string& name)
    : name_(name), temporaryName_(mayBeMade(name) ? makeTemporary(name) : ""), path_(temporaryName_) {}

NewFile::~NewFile() {
    if (!temporaryName_.empty()) {
        DeleteFileA(temporaryName_.c_str());
    }
}

// A file has the permissions of its folder.
bool NewFile::keep() {
    if (temporaryName_.empty() || MoveFileExA(temporaryName_.c_str(), name_.c_str(), MOVEFILE_REPLACE_EXISTING) == 0) {
        return false;
    }
    temporaryName_.clear();
    return true;
}

}  // namespace platform
