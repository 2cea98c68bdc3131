#include "support/files.h"

#include <fstream>
#include <iterator>
#include <random>
#include <system_error>

namespace support {

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string readText(const std::filesystem::path& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool writeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return file.good();
}

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    std::error_code error;
    do {
        path_ = std::filesystem::temp_directory_path() / ("tamtest-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_, error) && !error);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

}  // namespace support
