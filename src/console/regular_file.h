// Files that an operator names. Folders, pipes and devices open like files on some systems, but hold nothing to read or
// have no end; here only regular files open. Main thread only.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace console {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Where a text begins: behind the mark of its encoding, which some editors put in front. Leaves the file there.
void rewindText(std::FILE* file);

// Opens the file for reading in fopen's mode; null when it cannot be opened. The name may be any bytes.
File openRegularFile(const std::string& name, const char* mode);

}  // namespace console
