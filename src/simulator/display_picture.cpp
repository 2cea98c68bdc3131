#include "simulator/display_picture.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace simulator {

std::string pictureOf(const LocalDisplay& display) {
    std::string picture = "P6\n" + std::to_string(kDisplayWidth) + " " + std::to_string(kDisplayHeight) + "\n255\n";
    picture.reserve(picture.size() + display.pixels().size() * 3);
    for (const uint8_t pixel : display.pixels()) {
        const uint32_t color = display.isOn() ? display.palette()[pixel] : 0;
        for (const int shift : {16, 8, 0}) {
            picture.push_back(static_cast<char>(static_cast<uint8_t>(color >> shift)));
        }
    }
    return picture;
}

bool savePicture(const LocalDisplay& display, const std::string& path) {
    const std::string partPath = path + ".part";
    {
        const std::string picture = pictureOf(display);
        std::ofstream file(partPath, std::ios::binary);
        file.write(picture.data(), static_cast<std::streamsize>(picture.size()));
        file.close();
        if (!file) {
            return false;
        }
    }
    std::error_code error;
    std::filesystem::rename(partPath, path, error);
    return !error;
}

}  // namespace simulator
