// What the file system does beyond the C library. Names are in the system's own character set and may be any bytes.
// Any thread.
#pragma once

#include <string>

namespace platform {

enum class FileKind {
    kNone,     // there is nothing of this name
    kRegular,  // of any size
    kFolder,
    kOther,  // a device, a pipe, or nothing that can be looked at
};

// What there is of a name; links are followed.
FileKind kindOf(const std::string& name);

// Makes a folder within one that is there. False when there is none of this name afterwards.
bool makeFolder(const std::string& name);

}  // namespace platform
