#include <atomic>
#include <iterator>

#include "tiff/image_file.h"
#include "tiff/image_rules.h"
#include "tiff/win32/imaging.h"

namespace tifffile {
namespace {

constexpr int kMostAttempts = 100;

// A file that takes its name only when it is whole: until then it stands under another name in the same folder, and
// is removed when it is given up. What may not be overwritten is not opened.
class NewFile {
public:
    explicit NewFile(std::wstring name) : name_(std::move(name)) {
        if (mayReplace(name_))
            open();
    }
    ~NewFile() {
        if (!temporaryName_.empty())
            DeleteFileW(temporaryName_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // Empty: it could not be opened.
    const std::wstring& temporaryName() const { return temporaryName_; }

    bool keep() {
        if (!MoveFileExW(temporaryName_.c_str(), name_.c_str(), MOVEFILE_REPLACE_EXISTING))
            return false;
        temporaryName_.clear();
        return true;
    }

private:
    static bool mayReplace(const std::wstring& name) {
        constexpr DWORD kNotToReplace = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_READONLY;
        const DWORD attributes = GetFileAttributesW(name.c_str());
        if (name.empty() || attributes == INVALID_FILE_ATTRIBUTES)
            return !name.empty();
        return (attributes & kNotToReplace) == 0 && isOnDisk(name);
    }

    // Some devices have the attributes of ordinary files.
    static bool isOnDisk(const std::wstring& name) {
        HANDLE file = CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return false;
        const DWORD type = GetFileType(file);
        CloseHandle(file);
        return type == FILE_TYPE_DISK;
    }

    void open() {
        static std::atomic<unsigned> counter{0};
        const size_t slash = name_.find_last_of(L"\\/:");
        const std::wstring folder = slash == std::wstring::npos ? L"" : name_.substr(0, slash + 1);
        for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
            const std::wstring name =
                folder + L".ovktiff-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(counter++);
            HANDLE file =
                CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
            if (file != INVALID_HANDLE_VALUE) {
                CloseHandle(file);
                temporaryName_ = name;
                return;
            }
            if (GetLastError() != ERROR_FILE_EXISTS)
                return;
        }
    }

    std::wstring name_;
    std::wstring temporaryName_;
};

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
    NewFile newFile(wideName(fileName));
    if (newFile.temporaryName().empty())
        return Outcome::notOpened;
    return writeImage(newFile.temporaryName(), pixels, info) && newFile.keep() ? Outcome::done : Outcome::failed;
}

}  // namespace tifffile
