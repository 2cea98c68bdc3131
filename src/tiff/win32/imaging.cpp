#include "tiff/win32/imaging.h"

namespace tifffile {

Imaging::Imaging()
    : initialized_(CoInitializeEx(nullptr, COINIT_MULTITHREADED)),
      factory_(made<IWICImagingFactory>([](IWICImagingFactory** factory) {
          return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(factory));
      })) {}

// A thread that runs COM in another way already has it all the same, and there is nothing to give back.
Imaging::~Imaging() {
    factory_.reset();
    if (SUCCEEDED(initialized_))
        CoUninitialize();
}

std::wstring wideName(const char* fileName) {
    const int length = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, fileName, -1, nullptr, 0);
    if (length <= 1)
        return {};
    std::wstring name(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, fileName, -1, name.data(), length);
    name.resize(name.size() - 1);
    return name;
}

}  // namespace tifffile
