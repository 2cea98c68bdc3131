#include "platform/program_version.h"

#include <windows.h>
#include <winver.h>

#include <array>
#include <vector>

namespace platform {

// Reads the version resource of the running program's own file. Nothing is found in a file whose path is longer than
// the buffer.
bool programVersion(ProgramVersion& version) {
    std::array<wchar_t, MAX_PATH> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), path.size());
    if (length == 0 || length == path.size()) {
        return false;
    }
    DWORD ignored = 0;
    std::vector<char> resource(GetFileVersionInfoSizeW(path.data(), &ignored));
    if (resource.empty() ||
        !GetFileVersionInfoW(path.data(), 0, static_cast<DWORD>(resource.size()), resource.data())) {
        return false;
    }
    void* block = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(resource.data(), L"\\", &block, &size) || size < sizeof(VS_FIXEDFILEINFO)) {
        return false;
    }
    const auto* root = static_cast<const VS_FIXEDFILEINFO*>(block);
    version = {root->dwFileVersionMS, root->dwFileVersionLS};
    return true;
}

}  // namespace platform
