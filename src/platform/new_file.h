// A file that takes its name only when it is whole: whoever looks at the name sees the older file or the new one, never
// a part, and nothing stays behind of one that was given up. Any thread.
#pragma once

#include <string>

namespace platform {

class NewFile {
public:
    // Makes the new, empty file. What may not be overwritten is not: folders, devices, pipes, files that the user may
    // not write, and files in folders where the user may not make one. A symbolic link stays, what it leads to is
    // replaced or made; other hard links of the file keep the old one. The name may be any bytes.
    explicit NewFile(const std::string& name);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // The name under which to open and write it; empty: it could not be made.
    const std::string& path() const { return path_; }

    // Gives the file, written and closed by now, its name, in place of an older one and with the permissions of that.
    // False, and the older one is as it was, when that fails.
    bool keep();

private:
    std::string name_;
    std::string temporaryName_;  // empty while the file has none
    int file_ = -1;              // where a file can be without a name
    std::string path_;
};

}  // namespace platform
