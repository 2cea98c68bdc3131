// Files of tests.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

// All bytes of a file; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);

// The same of a text file, with the platform's line ends read as newlines.
std::string readText(const std::filesystem::path& path);

// Writes the bytes as they stand. False when the file cannot be written.
bool writeFile(const std::filesystem::path& path, std::string_view bytes);

// A new empty folder below the system's folder for temporary files; removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    // The path of a file in the folder.
    std::string file(std::string_view name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

}  // namespace support
