#include "hoxi/ovktiff.h"

#include "tiff/image_file.h"
#include "tiff/image_rules.h"

namespace {

constexpr int32_t kDone = 0;
constexpr int32_t kNotOpened = -1;
constexpr int32_t kReadFailed = -2;
constexpr int32_t kWriteFailed = -3;

int32_t resultOf(tifffile::Outcome outcome, int32_t failed) {
    switch (outcome) {
        case tifffile::Outcome::done:
            return kDone;
        case tifffile::Outcome::failed:
            return failed;
        case tifffile::Outcome::notOpened:
            break;
    }
    return kNotOpened;
}

}  // namespace

int32_t getTiffFileInfo(const char* fileName, TiffFileInfo* info) {
    if (fileName == nullptr || info == nullptr || !tifffile::readInfo(fileName, *info))
        return kNotOpened;
    return static_cast<int32_t>(tifffile::imageByteCount(info->width, info->height));
}

int32_t readTiffFile(const char* fileName, void* buffer) {
    if (fileName == nullptr || buffer == nullptr)
        return kNotOpened;
    return resultOf(tifffile::readPixels(fileName, static_cast<uint8_t*>(buffer)), kReadFailed);
}

int32_t writeTiffFile(const char* fileName, const void* buffer, const TiffFileInfo* info) {
    if (fileName == nullptr || buffer == nullptr || info == nullptr)
        return kNotOpened;
    if (tifffile::imageByteCount(info->width, info->height) == 0)
        return kWriteFailed;
    return resultOf(tifffile::writePixels(fileName, static_cast<const uint8_t*>(buffer), *info), kWriteFailed);
}
