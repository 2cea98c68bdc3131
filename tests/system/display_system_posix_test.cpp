// A colored picture of ImageMagick on the simulated display, looked at through the file that the scanner draws.

#include <algorithm>
#include <array>
#include <vector>

#include "support/child_process.h"
#include "system/system_test.h"

namespace systemtest {
namespace {

constexpr size_t kWidth = 1024;
constexpr size_t kHeight = 768;

using Color = std::array<uint8_t, 3>;  // red, green, blue

class Display : public SystemTest {
protected:
    void SetUp() override {
        SystemTest::SetUp();
        start("[[scanner]]\ndisplay_file = '" + folder.file("display.tif") + "'\n", 50);
    }

    // Runs ImageMagick and returns what it writes to standard output.
    static std::string convert(const std::vector<std::string>& arguments) {
        support::RunOptions options;
        options.arguments = arguments;
        const support::RunResult result = support::runProgram(CONVERT, options);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return result.out;
    }
    // Makes a BMP file of the kind that the display takes: 8 bits, not compressed, with a color map.
    std::string bmp(std::vector<std::string> picture) const {
        const std::string name = folder.file("picture.bmp");
        picture.insert(picture.end(),
                       {"-depth", "8", "-compress", "none", "-define", "bmp:format=bmp3", "bmp:" + name});
        convert(picture);
        return name;
    }
    // The pixels of a file, as ImageMagick sees them.
    static std::vector<Color> colors(const std::string& file) {
        const std::string bytes = convert({file, "-depth", "8", "rgb:-"});
        std::vector<Color> pixels(bytes.size() / 3);
        for (size_t i = 0; i < pixels.size(); ++i)
            for (size_t color = 0; color < 3; ++color)
                pixels[i][color] = static_cast<uint8_t>(bytes[3 * i + color]);
        return pixels;
    }
    std::vector<Color> shown() const {
        const std::vector<Color> pixels = colors(folder.file("display.tif"));
        EXPECT_EQ(pixels.size(), kWidth * kHeight);
        return pixels;
    }

    support::TemporaryFolder folder;
};

// What a color of the file's map becomes in the 128 colors that a picture has on the display.
Color kept(const std::vector<Color>& map, size_t index) {
    return index >= 254 ? map[255] : map[index & ~size_t{1}];
}

TEST_F(Display, ShowsColorsUpToItsEdgesAndCutsWhatLiesBeyond) {
    const std::string name = bmp({"-size", "300x200", "plasma:red-blue", "-colors", "256", "-type", "Palette"});
    type("cfglcp " + name);
    type("wlcd " + name + " 900 700");
    // Header and map as the file has them; the pixels come from the bottom line up.
    const std::string bytes = support::readFile(name);
    std::vector<Color> map(256);
    for (size_t i = 0; i < map.size(); ++i)
        for (size_t color = 0; color < 3; ++color)
            map[i][color] = static_cast<uint8_t>(bytes[54 + 4 * i + 2 - color]);
    const std::vector<Color> display = shown();
    size_t different = 0;
    for (size_t y = 0; y < 68; ++y)
        for (size_t x = 0; x < 124; ++x) {
            const auto index = static_cast<uint8_t>(bytes[54 + 1024 + (199 - y) * 300 + x]);
            different += display[(700 + y) * kWidth + 900 + x] != kept(map, index);
        }
    EXPECT_EQ(different, 0u);
    EXPECT_EQ(display[700 * kWidth + 899], map[0]) << "left of the picture";
}

}  // namespace
}  // namespace systemtest
