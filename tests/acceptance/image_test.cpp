// Images from the simulated scanner to files and back, through the built tester.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "acceptance/tamtest.h"
#include "hoxi/ovktiff.h"

namespace acceptance {
namespace {

class Images : public ::testing::Test {
protected:
    support::RunResult run(const std::string& input, std::vector<std::string> arguments = {}) {
        return runTester(input, {.arguments = std::move(arguments), .folder = folder.path().string()});
    }

    std::vector<uint8_t> pixels(const std::string& name) {
        TiffFileInfo info{};
        const int32_t count = getTiffFileInfo(folder.file(name).c_str(), &info);
        std::vector<uint8_t> bytes(std::max(count, 1));
        EXPECT_EQ(readTiffFile(folder.file(name).c_str(), bytes.data()), 0) << name;
        return bytes;
    }

    support::TemporaryFolder folder;
};

TEST_F(Images, FirstCaptureOfTheSamplesLeavesAFingerInAFile) {
    const support::RunResult result = run("", {TAMTEST_SOURCE_DIR "/samples/first-capture.scr", "finger.tif"});
    EXPECT_EQ(result.exitCode, 0) << result.out;
    TiffFileInfo info{};
    EXPECT_EQ(getTiffFileInfo(folder.file("finger.tif").c_str(), &info), 800 * 750) << result.out;
    EXPECT_EQ(info.width, 800u);
    EXPECT_EQ(info.height, 750u);
    EXPECT_EQ(info.h_res, 500);
    const std::vector<uint8_t> finger = pixels("finger.tif");
    EXPECT_LT(*std::min_element(finger.begin(), finger.end()), 100);
    EXPECT_GT(*std::max_element(finger.begin(), finger.end()), 200);
}

TEST_F(Images, FileGivenToTheScannerComesBackAsItWas) {
    run("", {TAMTEST_SOURCE_DIR "/samples/first-capture.scr", "finger.tif"});
    const support::RunResult result =
        run("ri finger.tif 7 1 1\nqii 7 1 1\new 133 3\nsi copy.tif 7 1 1\nsilt finger.tif bad.tif 2\nquit\n");
    EXPECT_EQ(result.exitCode, 0) << result.out;
    EXPECT_EQ(pixels("copy.tif"), pixels("finger.tif"));
    EXPECT_FALSE(std::filesystem::exists(folder.file("bad.tif"))) << result.out;
}

TEST_F(Images, UnusableFilesAreToldAndTheLinkStaysUsable) {
    support::writeFile(folder.file("empty.tif"), "");
    support::writeFile(folder.file("text.tif"), "This is no image.\n");
    std::filesystem::create_directory(folder.file("folder.tif"));
    const support::RunResult result =
        run("ri none.tif 1 1 1\nri empty.tif 1 1 1\nri text.tif 1 1 1\nri folder.tif 1 1 1\nnop\nw 100\nquit\n");
    for (const char* name : {"none", "empty", "text", "folder"})
        EXPECT_NE(result.out.find(std::string("TamTest: can't open TIFF file ") + name + ".tif\n"), std::string::npos)
            << result.out;
    EXPECT_NE(result.out.find("code: 1  state: 3  tag: 5"), std::string::npos) << result.out;
}

TEST_F(Images, UnwritableTargetIsToldAndTheLinkStaysUsable) {
    const support::RunResult result =
        run("capf 1 1 1\ncw 13\nqii 1 1 1\new 133 3\nsi none/x.tif 1 1 1\nsi . 1 1 1\nnop\nw 100\nquit\n");
    size_t told = 0;
    for (size_t at = 0; (at = result.out.find("TamTest: Error opening TIFF file\n", at)) != std::string::npos; ++at)
        ++told;
    EXPECT_EQ(told, 2u) << result.out;
    EXPECT_NE(result.out.find("code: 1  state: 3  tag: 5"), std::string::npos) << result.out;
}

}  // namespace
}  // namespace acceptance
