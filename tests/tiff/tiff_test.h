// What the tests of the TIFF library start from: a folder of their own and short ways to its three functions.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "hoxi/ovktiff.h"
#include "support/files.h"

inline bool operator==(const TiffFileInfo& left, const TiffFileInfo& right) {
    return left.depth == right.depth && left.width == right.width && left.height == right.height &&
           left.h_res == right.h_res && left.v_res == right.v_res && left.first == right.first &&
           left.second == right.second;
}

namespace tifffile {

inline constexpr TiffFileInfo kUntouched{111, 222, 333, 444, 555, 66, 77};

// No two neighbouring pixels and no two rows are the same.
inline std::string pattern(uint32_t width, uint32_t height) {
    std::string pixels;
    for (uint32_t row = 0; row < height; ++row)
        for (uint32_t column = 0; column < width; ++column)
            pixels += static_cast<char>(row * 31 + column * 7 + row * column);
    return pixels;
}

inline std::string inverted(std::string pixels) {
    std::transform(pixels.begin(), pixels.end(), pixels.begin(), [](char pixel) { return static_cast<char>(~pixel); });
    return pixels;
}

class TiffTest : public ::testing::Test {
protected:
    void put(std::string_view bytes) { ASSERT_TRUE(support::writeFile(file(), bytes)); }
    std::string file() const { return folder.file("image.tif"); }

    int32_t readInfo() {
        info = kUntouched;
        return getTiffFileInfo(file().c_str(), &info);
    }

    // The pixels of the file, or a text that says what went wrong; nothing is written beyond the byte count.
    std::string read() {
        const int32_t count = readInfo();
        if (count <= 0)
            return "getTiffFileInfo gave " + std::to_string(count);
        std::string pixels(static_cast<size_t>(count), '\xEE');
        pixels += "end";
        const int32_t result = readTiffFile(file().c_str(), pixels.data());
        if (result != 0)
            return "readTiffFile gave " + std::to_string(result);
        EXPECT_EQ(pixels.substr(pixels.size() - 3), "end");
        pixels.resize(pixels.size() - 3);
        return pixels;
    }

    // Neither function uses the file, neither prints anything, and nothing that is the caller's is touched.
    void expectRefused() {
        uint8_t byte = 0xEE;
        ::testing::internal::CaptureStderr();
        ::testing::internal::CaptureStdout();
        const int32_t count = readInfo();
        const int32_t result = count <= 0 ? readTiffFile(file().c_str(), &byte) : 0;
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(count, -1);
        EXPECT_EQ(result, -1);
        EXPECT_EQ(info, kUntouched);
        EXPECT_EQ(byte, 0xEE);
    }

    support::TemporaryFolder folder;
    TiffFileInfo info = kUntouched;
};

}  // namespace tifffile
