// The Windows Imaging Component for the time of one call: COM is initialised and released with it, and whatever the
// calling thread had set up stays as it was.
#pragma once

#include <wincodec.h>
#include <windows.h>

#include <memory>
#include <string>

namespace tifffile {

struct Released {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, Released>;

// What a call of the form get(Interface**) gives, null when it fails.
template <typename Interface, typename Get>
ComPointer<Interface> made(Get get) {
    Interface* object = nullptr;
    return SUCCEEDED(get(&object)) ? ComPointer<Interface>(object) : nullptr;
}

class Imaging {
public:
    Imaging();
    ~Imaging();
    Imaging(const Imaging&) = delete;
    Imaging& operator=(const Imaging&) = delete;

    IWICImagingFactory* factory() const { return factory_.get(); }  // null: not to be had

private:
    HRESULT initialized_;
    ComPointer<IWICImagingFactory> factory_;
};

// A file name as programs hand it over, in the process's own code page; empty when it is none.
std::wstring wideName(const char* fileName);

}  // namespace tifffile
