#include "console/progress.h"

#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace console {
namespace {

using support::fakePlatform;

class ProgressLine : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakePlatform().outputColumns = 80;
    }
};

TEST(ProgressText, TellsBytesPercentRateAndTimeLeft) {
    EXPECT_EQ(progressText(50000000, 100000000, 2000), "50000000 of 100000000 bytes, 50 %, 25.0 MB/s, 2 s left");
}

TEST(ProgressText, TellsNoTimeWhileNothingHasMoved) {
    EXPECT_EQ(progressText(0, 100, 5000), "0 of 100 bytes, 0 %, 0.0 MB/s");
}

TEST(ProgressText, NeverDividesByNothing) {
    EXPECT_EQ(progressText(0, 0, 0), "0 of 0 bytes, 100 %, 0.0 MB/s");
}

TEST_F(ProgressLine, AppearsAfterASecondAndIsErased) {
    EXPECT_EQ(printed([] {
                  Progress progress(100);
                  fakePlatform().nowMs += 999;
                  progress.update(10);
                  fakePlatform().nowMs += 1;
                  progress.update(20);
              }),
              "\r20 of 100 bytes, 20 %, 0.0 MB/s, 4 s left\r" + std::string(41, ' ') + "\r");
}

TEST_F(ProgressLine, IsDrawnAgainNowAndThen) {
    const std::string text = printed([] {
        Progress progress(100);
        fakePlatform().nowMs += 1000;
        progress.update(20);
        fakePlatform().nowMs += 199;
        progress.update(30);
        fakePlatform().nowMs += 1;
        progress.update(40);
    });
    EXPECT_EQ(text.find("30 of"), std::string::npos) << text;
    EXPECT_NE(text.find("\r40 of"), std::string::npos) << text;
}

TEST_F(ProgressLine, IsCutShortOfTheTerminalsWidth) {
    fakePlatform().outputColumns = 20;
    EXPECT_EQ(printed([] {
                  Progress progress(100);
                  fakePlatform().nowMs += 1000;
                  progress.update(20);
              }),
              "\r20 of 100 bytes, 20\r" + std::string(19, ' ') + "\r");
}

TEST_F(ProgressLine, NeverReachesAPipeOrFile) {
    fakePlatform().outputColumns = 0;
    EXPECT_EQ(printed([] {
                  Progress progress(100);
                  fakePlatform().nowMs += 5000;
                  progress.update(20);
              }),
              "");
}

}  // namespace
}  // namespace console
