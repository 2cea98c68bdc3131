#include "platform/new_file.h"
#include "tiff/image_file.h"
#include "tiff/image_rules.h"
#include "tiff/win32/imaging.h"

namespace tifffile {
namespace {

bool setUncompressed(IPropertyBag2& options) {
    wchar_t name[] = L"TiffCompressionMethod";
    PROPBAG2 option{};
    option.pstrName = name;
    VARIANT value{};
    value.vt = VT_UI1;
    value.bVal = WICTiffCompressionNone;
    return SUCCEEDED(options.Write(1, &option, &value));
}

// What is not known is left out, as far as the component lets it: it may refuse to know one without the other.
bool setResolution(IWICBitmapFrameEncode& frame, const TiffFileInfo& info) {
    if (info.h_res == 0 && info.v_res == 0)
        return true;
    return SUCCEEDED(frame.SetResolution(info.h_res, info.v_res)) || info.h_res == 0 || info.v_res == 0;
}

bool writeFrame(IWICBitmapEncoder& encoder, const uint8_t* pixels, const TiffFileInfo& info) {
    IPropertyBag2* madeOptions = nullptr;
    const auto frame = made<IWICBitmapFrameEncode>(
        [&](IWICBitmapFrameEncode** result) { return encoder.CreateNewFrame(result, &madeOptions); });
    const ComPointer<IPropertyBag2> options(madeOptions);
    if (!frame || !options || !setUncompressed(*options) || FAILED(frame->Initialize(options.get())))
        return false;
    WICPixelFormatGUID format = GUID_WICPixelFormat8bppGray;
    if (FAILED(frame->SetSize(info.width, info.height)) || !setResolution(*frame, info) ||
        FAILED(frame->SetPixelFormat(&format)) || format != GUID_WICPixelFormat8bppGray)
        return false;
    // The component only reads what it is given, whatever its parameter says.
    const uint32_t byteCount = imageByteCount(info.width, info.height);
    return SUCCEEDED(frame->WritePixels(info.height, info.width, byteCount, const_cast<uint8_t*>(pixels))) &&
           SUCCEEDED(frame->Commit());
}

bool writeImage(const std::wstring& name, const uint8_t* pixels, const TiffFileInfo& info) {
    const Imaging imaging;
    IWICImagingFactory* factory = imaging.factory();
    if (factory == nullptr)
        return false;
    const auto stream = made<IWICStream>([&](IWICStream** result) { return factory->CreateStream(result); });
    const auto encoder = made<IWICBitmapEncoder>(
        [&](IWICBitmapEncoder** result) { return factory->CreateEncoder(GUID_ContainerFormatTiff, nullptr, result); });
    return stream && encoder && SUCCEEDED(stream->InitializeFromFilename(name.c_str(), GENERIC_WRITE)) &&
           SUCCEEDED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) &&
           writeFrame(*encoder, pixels, info) && SUCCEEDED(encoder->Commit());
}

}  // namespace

Outcome writePixels(const char* fileName, const uint8_t* pixels, const TiffFileInfo& info) {
    platform::NewFile newFile(fileName);
    if (newFile.path().empty())
        return Outcome::notOpened;
    return writeImage(wideName(newFile.path().c_str()), pixels, info) && newFile.keep() ? Outcome::done
                                                                                        : Outcome::failed;
}

}  // namespace tifffile
