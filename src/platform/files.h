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

// Gives a file another name in the same folder, in place of the regular file that has it, or that a link of this name
// leads to, and with the permissions of that file. False, and both are as they were, when that cannot be done: also
// when the old file may not be written, or is no regular one.
bool replaceFile(const std::string& fresh, const std::string& name);

}  // namespace platform
