#include "tiff/image_file.h"
#include "tiff/image_rules.h"
#include "tiff/win32/imaging.h"

namespace tifffile {
namespace {

// Tags of the file's directory, as paths of the metadata reader.
const wchar_t kBits[] = L"/ifd/{ushort=258}";
const wchar_t kCompression[] = L"/ifd/{ushort=259}";
const wchar_t kSamples[] = L"/ifd/{ushort=277}";
const wchar_t kXResolution[] = L"/ifd/{ushort=282}";
const wchar_t kYResolution[] = L"/ifd/{ushort=283}";
const wchar_t kResolutionUnit[] = L"/ifd/{ushort=296}";
const wchar_t kSampleFormat[] = L"/ifd/{ushort=339}";

constexpr uint32_t kInches = 2;
constexpr uint32_t kCentimeters = 3;
constexpr uint32_t kUnsigned = 1;
constexpr uint32_t kUntyped = 4;

struct OpenImage {
    Imaging imaging;
    uint64_t fileSize = 0;
    ComPointer<IWICBitmapFrameDecode> frame;
    ComPointer<IWICMetadataQueryReader> tags;
};

// 0 for what is no file.
uint64_t fileSizeOf(const std::wstring& name) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0)
        return 0;
    return uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

// A cut directory has no reader, and not every component survives being asked for its tags.
bool hasReadableDirectory(IWICBitmapFrameDecode& frame) {
    const auto blocks = made<IWICMetadataBlockReader>([&](IWICMetadataBlockReader** result) {
        return frame.QueryInterface(__uuidof(IWICMetadataBlockReader), reinterpret_cast<void**>(result));
    });
    return blocks && made<IWICMetadataReader>(
                         [&](IWICMetadataReader** reader) { return blocks->GetReaderByIndex(0, reader); }) != nullptr;
}

// Frame and tags stay null when this is no TIFF file.
void open(OpenImage& image, const char* fileName) {
    const std::wstring name = wideName(fileName);
    image.fileSize = fileSizeOf(name);
    IWICImagingFactory* factory = image.imaging.factory();
    if (image.fileSize == 0 || factory == nullptr)
        return;
    const auto decoder = made<IWICBitmapDecoder>([&](IWICBitmapDecoder** result) {
        return factory->CreateDecoderFromFilename(name.c_str(), nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand,
                                                  result);
    });
    GUID format{};
    if (!decoder || FAILED(decoder->GetContainerFormat(&format)) || format != GUID_ContainerFormatTiff)
        return;
    image.frame =
        made<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode** frame) { return decoder->GetFrame(0, frame); });
    if (image.frame && hasReadableDirectory(*image.frame))
        image.tags = made<IWICMetadataQueryReader>(
            [&](IWICMetadataQueryReader** tags) { return image.frame->GetMetadataQueryReader(tags); });
}

// The first number of a tag; a rational as it is packed, the numerator low.
uint64_t tag(const OpenImage& image, const wchar_t* path, uint64_t whenMissing) {
    PROPVARIANT value;
    PropVariantInit(&value);
    uint64_t number = whenMissing;
    if (SUCCEEDED(image.tags->GetMetadataByName(path, &value))) {
        if (value.vt == VT_UI2)
            number = value.uiVal;
        else if (value.vt == VT_UI4)
            number = value.ulVal;
        else if (value.vt == VT_UI8)
            number = value.uhVal.QuadPart;
        else if (value.vt == (VT_VECTOR | VT_UI2) && value.caui.cElems != 0)
            number = value.caui.pElems[0];
    }
    PropVariantClear(&value);
    return number;
}

uint16_t resolution(const OpenImage& image, const wchar_t* path) {
    const uint64_t ratio = tag(image, path, 0);
    const auto numerator = static_cast<uint32_t>(ratio);
    const auto denominator = static_cast<uint32_t>(ratio >> 32);
    const double value = denominator != 0 ? static_cast<double>(numerator) / denominator : 0;
    const uint64_t unit = tag(image, kResolutionUnit, kInches);
    if (unit == kInches)
        return dotsPerInch(value, ResolutionUnit::inch);
    return dotsPerInch(value, unit == kCentimeters ? ResolutionUnit::centimeter : ResolutionUnit::none);
}

// The pixel format tells white from black, and that there is no palette.
bool isGray8(const OpenImage& image) {
    WICPixelFormatGUID format{};
    const uint64_t sampleFormat = tag(image, kSampleFormat, kUnsigned);
    return SUCCEEDED(image.frame->GetPixelFormat(&format)) && format == GUID_WICPixelFormat8bppGray &&
           tag(image, kBits, 1) == 8 && tag(image, kSamples, 1) == 1 &&
           (sampleFormat == kUnsigned || sampleFormat == kUntyped);
}

bool describe(const OpenImage& image, TiffFileInfo& info) {
    UINT width = 0;
    UINT height = 0;
    if (!image.tags || !isGray8(image) || FAILED(image.frame->GetSize(&width, &height)))
        return false;
    const uint32_t byteCount = imageByteCount(width, height);
    const uint64_t expansion = expansionOf(tag(image, kCompression, 1));
    if (byteCount == 0 || expansion == 0 || !canHold(image.fileSize, byteCount, expansion))
        return false;
    info = {8, width, height, resolution(image, kXResolution), resolution(image, kYResolution), 1, 0};
    return true;
}

}  // namespace

bool readInfo(const char* fileName, TiffFileInfo& info) {
    OpenImage image;
    open(image, fileName);
    return describe(image, info);
}

Outcome readPixels(const char* fileName, uint8_t* pixels) {
    OpenImage image;
    open(image, fileName);
    TiffFileInfo info{};
    if (!describe(image, info))
        return Outcome::notOpened;
    const HRESULT result =
        image.frame->CopyPixels(nullptr, info.width, imageByteCount(info.width, info.height), pixels);
    return SUCCEEDED(result) ? Outcome::done : Outcome::failed;
}

}  // namespace tifffile
