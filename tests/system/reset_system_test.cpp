// Resets as they really are: the scanner goes away, the library is closed for half a minute, the scanner comes back.

#include "console/console_state.h"
#include "link/link_state.h"
#include "link/status_check.h"
#include "system/system_test.h"

namespace systemtest {
namespace {

class Reset : public SystemTest {
protected:
    static bool contains(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }
};

TEST_F(Reset, ScannerGoesAwayAndComesBackWithCodeTwo) {
    start("", 10);
    const std::string text = type("rst");
    EXPECT_TRUE(contains(text, "scanner 0 command: code=1, tag=1, size=0 - hoxirtn=0\n")) << text;
    EXPECT_TRUE(contains(text, "TamTest: HoxiInitialize found 1 scanners\n")) << text;
    type("w 3000");
    EXPECT_TRUE(scannerlink::heldReport(0, 2));
    type("nop");
    type("w 100");
    EXPECT_TRUE(scannerlink::heldReport(0, 1));
}

TEST_F(Reset, LoopRunsUntilTheLibraryCannotBeOpenedAgain) {
    start("[[call_fault]]\nfunction = \"HoxiInitialize\"\nresult = 9020\nnth = 3\n", 10);
    const std::string text = type("rstl");
    size_t passes = 0;
    for (size_t at = 0; (at = text.find("TamTest: HoxiInitialize found 1 scanners\n", at)) != std::string::npos; ++at)
        ++passes;
    EXPECT_EQ(passes, 1u) << text;
    EXPECT_TRUE(contains(text, "TamTest: Failed HoxiInitialize ()\n")) << text;
}

TEST_F(Reset, ScannerThatDoesNotComeBackEndsTheLoop) {
    start("[[scanner]]\n[[scanner]]\nboot_report = false\n", 10);
    const std::string text = type("rstl");
    EXPECT_TRUE(contains(text, "TamTest: one of the scanners didn't complete reset\n")) << text;
}

TEST_F(Reset, EveryScannerOfEightIsResetAndFoundAgain) {
    start("[library]\nscanners = 8\n[[call_fault]]\nfunction = \"HoxiInitialize\"\nresult = 9020\nnth = 3\n", 10);
    const std::string text = type("rstl");
    EXPECT_TRUE(contains(text, "TamTest: HoxiInitialize found 8 scanners\n")) << text;
    EXPECT_FALSE(contains(text, "didn't")) << text;
    EXPECT_TRUE(contains(text, "scanner 7 command: code=1, tag=32, size=0 - hoxirtn=0\n")) << text;
}

}  // namespace
}  // namespace systemtest
