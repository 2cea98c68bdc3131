#include "tiff/posix/tiff_handle.h"

#include <unistd.h>

#include <algorithm>
#include <cstdarg>

namespace tifffile {
namespace {

// Returning 1 keeps the message from the handlers of the whole process, which print it.
int sayNothing(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

}  // namespace

bool FileDescriptor::close() {
    return !open() || ::close(std::exchange(number_, -1)) == 0;
}

TiffHandle openTiff(const FileDescriptor& file, const char* mode, uint64_t mostMemory) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (options == nullptr)
        return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(options, sayNothing, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, sayNothing, nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(std::min<uint64_t>(mostMemory, INT64_MAX)));
    TiffHandle handle(TIFFFdOpenExt(file.number(), "", mode, options));
    TIFFOpenOptionsFree(options);
    return handle;
}

}  // namespace tifffile
