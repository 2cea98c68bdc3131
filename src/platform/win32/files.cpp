#include "platform/files.h"

#include <windows.h>

namespace platform {

FileKind kindOf(const std::string& name) {
    const DWORD attributes = GetFileAttributesA(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? FileKind::kNone : FileKind::kOther;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return FileKind::kFolder;
    }
    // Some devices have the attributes of ordinary files.
    HANDLE file = CreateFileA(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return FileKind::kOther;
    }
    const DWORD type = GetFileType(file);
    CloseHandle(file);
    return type == FILE_TYPE_DISK ? FileKind::kRegular : FileKind::kOther;
}

bool makeFolder(const std::string& name) {
    return CreateDirectoryA(name.c_str(), nullptr) != 0 || kindOf(name) == FileKind::kFolder;
}

}  // namespace platform
