#include "platform/files.h"

#include <windows.h>

namespace platform {

FileKind kindOf(const std::string& name) {
    const DWORD attributes = GetFileAttributesA(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? FileKind::kNone : FileKind::kOther;
    }
    constexpr DWORD kNotRegular = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
    if ((attributes & kNotRegular) != 0) {
        return FileKind::kOther;
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

// The system itself refuses to replace read-only files, and a file has the permissions of its folder.
bool replaceFile(const std::string& fresh, const std::string& name) {
    return kindOf(name) != FileKind::kOther && MoveFileExA(fresh.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

}  // namespace platform
