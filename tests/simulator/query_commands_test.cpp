#include <string>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "platform/clock.h"
#include "simulator_test.h"

namespace simulator {
namespace {

class QueryCommandsTest : public SimulatorTest {
protected:
    void capture(uint32_t tag, uint32_t handle, uint32_t scanType) {
        send(70, tag, {handle, scanType, 1});
        EXPECT_EQ(untilComplete(tag).back().brief(), "133:3:" + std::to_string(tag));
    }
    // The report between pending and complete.
    SeenReport answerOf(uint32_t tag) {
        EXPECT_EQ(next().brief(), "133:1:" + std::to_string(tag));
        const SeenReport report = next();
        EXPECT_EQ(next().brief(), "133:3:" + std::to_string(tag));
        return report;
    }
};

TEST_F(QueryCommandsTest, WithoutACaptureTheStandingIsEmpty) {
    open();
    send(81, 1);
    const SeenReport standing = answerOf(1);
    EXPECT_EQ(standing.brief(), "131:3:1");
    EXPECT_EQ(standing.size, 16u);
    EXPECT_EQ(standing.words(4), "0 0 0 0");
}

TEST_F(QueryCommandsTest, LastCaptureIsStillKnown) {
    openText("[[scanner]]\nfinger_width = 9\n");
    capture(1, 4, 5);
    send(81, 2);
    EXPECT_EQ(answerOf(2).words(4), "1 4 5 13");
}

TEST_F(QueryCommandsTest, CommandStatesAreRepeatedUnderTheTagOfTheCommand) {
    openText("[[scanner]]\nfinger_width = 9\ncontact_ms = 3600000\n");
    send(0, 1);
    send(12, 2, {1, 1, 1});
    send(70, 3, {1, 1, 1});
    EXPECT_EQ(nextBriefs(6), "1:3:1 133:1:2 133:5:2 133:1:3 132:2:3 132:2:3");
    send(82, 4, {2});
    EXPECT_EQ(answerOf(4).brief(), "133:5:2");
    send(82, 5, {3});
    EXPECT_EQ(answerOf(5).brief(), "133:1:3");
    send(82, 6, {99});
    EXPECT_EQ(nextBriefs(2), "133:1:6 133:5:6");
    EXPECT_EQ(put(0, 82, 7), 0u);
    EXPECT_EQ(nextBriefs(2), "133:1:7 133:6:7");
}

TEST_F(QueryCommandsTest, ImageInfoOfNoImageFails) {
    open();
    send(83, 1, {1, 1, 1});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:5:1");
    send(83, 2, {1, 1});
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:6:2");
}

TEST_F(QueryCommandsTest, QualityIsMeasuredOnTheImage) {
    openText("[[scanner]]\nfinger_width = 240\nfinger_height = 225\nresolution = 250\ncapture_ms = 234\n");
    capture(1, 1, 2);
    send(84, 2, {1, 2});
    const SeenReport quality = answerOf(2);
    EXPECT_EQ(quality.brief(), "53:3:2");
    EXPECT_EQ(quality.size, 26u);
    EXPECT_EQ(quality.words(3), "1 2 1");
    const auto field = [&](size_t offset) { return quality.bytes[offset] + 256 * quality.bytes[offset + 1]; };
    EXPECT_EQ(field(34), 234);
    EXPECT_GT(field(32), 50);
    EXPECT_LE(field(32), 100);
    EXPECT_GT(field(36), 30);
    EXPECT_LT(field(36), 90);
    EXPECT_GE(field(36), field(38) + field(40) + field(42) + field(44));
    send(84, 3, {1, 3});
    EXPECT_EQ(nextBriefs(2), "133:1:3 133:5:3");
}

TEST_F(QueryCommandsTest, EachCameraIsASubAssembly) {
    openText("[[scanner]]\nyear = 2020\nmonth = 5\nday = 6\n");
    send(85, 1);
    const SeenReport list = answerOf(1);
    EXPECT_EQ(list.brief(), "135:3:1");
    EXPECT_EQ(list.size, 36u);
    EXPECT_EQ(list.word(20), 4u);
    const uint32_t made = 2020 | 5 << 16 | 6 << 24;
    const uint32_t masks[] = {1, 2, 4, 8};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(list.word(24 + 8 * i), masks[i] | 1 << 8 | (1000 + masks[i]) << 16);
        EXPECT_EQ(list.word(28 + 8 * i), made);
    }
}

TEST_F(QueryCommandsTest, PreviewNamesTheCommandThatMadeTheImage) {
    openText("[[scanner]]\nfinger_width = 9\n");
    capture(31, 1, 2);
    send(89, 2, {1, 2});
    const SeenReport preview = answerOf(2);
    EXPECT_EQ(preview.brief(), "51:3:2");
    EXPECT_EQ(preview.words(3), "31 1 2");
    send(89, 3, {2, 2});
    EXPECT_EQ(nextBriefs(2), "133:1:3 133:5:3");
}

TEST_F(QueryCommandsTest, SwitchIsPressedWhenThePersonComes) {
    openText("[[scanner]]\ncontact_ms = 4000\n");
    const uint64_t start = platform::nowMs();
    send(80, 1, {1, 4000, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(answerOf(1).brief(), "80:1:1");
    EXPECT_GE(platform::nowMs(), start + 4000);
    send(80, 2, {0, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(answerOf(2).brief(), "80:1:2");
    send(80, 3, {1, 3999, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(answerOf(3).brief(), "80:0:3");
    send(80, 4, {2, 9999, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(answerOf(4).brief(), "80:0:4");
    send(80, 5, {3, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:5 133:6:5");
}

TEST_F(QueryCommandsTest, WaitingForTheSwitchDoesNotKeepOthersWaiting) {
    openText("[[scanner]]\ncontact_ms = 3600000\n");
    send(80, 1, {1, 0, 0});
    send(0, 2);
    EXPECT_EQ(nextBriefs(2), "133:1:1 1:3:2");
}

}  // namespace
}  // namespace simulator
