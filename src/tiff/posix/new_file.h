// A file that takes its name only when it is whole: until then it has no name in the same folder, or another one where
// a file must have one, and is gone when it is given up.
#pragma once

#include <string>

#include "tiff/posix/tiff_handle.h"

namespace tifffile {

class NewFile {
public:
    // Opens the new file. What may not be overwritten is not opened: folders, devices, pipes,
    // files that the user may not write, and files in folders where the user may not make one. A symbolic link stays,
    // what it points to is replaced or made; other hard links of the file keep the old one.
    explicit NewFile(const char* fileName);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const FileDescriptor& file() const { return file_; }
    // Closes the file and gives it its name, in place of an older one. False: that failed.
    bool keep();

private:
    std::string name_;
    std::string temporaryName_;  // empty while the file has none
    FileDescriptor file_;
};

}  // namespace tifffile
