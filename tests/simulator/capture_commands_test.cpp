// Captures, grabs and what steers them: their reports, their order and what they leave behind.
#include <algorithm>
#include <string>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "simulator_test.h"

namespace simulator {
namespace {

// Small pictures, so that they are drawn at once.
constexpr const char* kSmall = R"(
[[scanner]]
finger_width = 40
finger_height = 30
slap_width = 41
slap_height = 31
palm_width = 42
palm_height = 32
hand_width = 43
hand_height = 33
)";

constexpr uint32_t kHour = 3'600'000;

class CaptureCommandsTest : public SimulatorTest {
protected:
    void openSmall(const std::string& keys = "") { openText(kSmall + keys); }
    // A capture that waits for a person who does not come.
    void openWaiting() { openSmall("contact_ms = " + std::to_string(kHour) + "\n"); }
    // The progress codes among the reports, after a look at the rest of their bodies.
    static std::string progress(const std::vector<SeenReport>& reports, const std::string& start) {
        std::string codes;
        for (const SeenReport& report : reports) {
            if (report.code == 132) {
                EXPECT_EQ(report.words(3), start);
                codes += (codes.empty() ? "" : " ") + std::to_string(report.word(32));
            }
        }
        return codes;
    }
    std::string stateOf(uint32_t tag) {
        const std::vector<SeenReport> reports = untilComplete(tag);
        return reports.back().brief();
    }
    std::vector<uint8_t> captureFinger(uint32_t tag, uint32_t handle) {
        send(70, tag, {handle, 1, 1});
        EXPECT_EQ(stateOf(tag), "133:3:" + std::to_string(tag));
        return fetchImage(tag + 1, handle, 1, 1, 40 * 30);
    }
};

TEST_F(CaptureCommandsTest, FingerGoesItsStepsInOrder) {
    openSmall();
    send(70, 5, {7, 8, 1});
    const std::string steps = "132:2:5 132:2:5 132:2:5 132:2:5 132:2:5 132:2:5 132:3:5";
    std::vector<SeenReport> reports = untilComplete(5);
    std::string briefs;
    for (const SeenReport& report : reports) {
        briefs += report.brief() + " ";
    }
    EXPECT_EQ(briefs, "133:1:5 " + steps + " 133:3:5 ");
    EXPECT_EQ(progress(reports, "5 7 8"), "1 2 3 4 10 11 13");
    EXPECT_EQ(reports[1].size, 16u);
}

TEST_F(CaptureCommandsTest, EachKindLeavesAnImageOfItsSize) {
    openSmall();
    const uint32_t codes[] = {70, 74, 75, 71};
    for (uint32_t i = 0; i < 4; ++i) {
        send(codes[i], 10 + i, {i, 5, 1});
        EXPECT_EQ(stateOf(10 + i), "133:3:" + std::to_string(10 + i));
        send(83, 20 + i, {i, 5, 1});
        next();
        const std::string width = std::to_string(40 + i);
        const std::string size = std::to_string(30 + i) + " " + width + " " + width;
        EXPECT_EQ(next().words(9), std::to_string(i) + " 5 1 " + size + " 8 500 500");
        next();
    }
}

TEST_F(CaptureCommandsTest, ImageIsThereAsSoonAsProgressSaysSo) {
    openSmall();
    send(70, 5, {1, 1, 1});
    SeenReport report = next();
    while (report.code != 132 || report.word(32) != 13) {
        report = next();
    }
    send(83, 6, {1, 1, 1});
    EXPECT_EQ(nextBriefs(4), "133:3:5 133:1:6 52:3:6 133:3:6");
}

TEST_F(CaptureCommandsTest, ImageIsNotThereBefore) {
    openWaiting();
    send(70, 5, {1, 1, 1});
    send(83, 6, {1, 1, 1});
    EXPECT_EQ(stateOf(6), "133:5:6");
}

TEST_F(CaptureCommandsTest, HandMayStateNoSizeThoughItsFieldsFollow) {
    openSmall();
    std::vector<uint8_t> packet = makePacket(71, 5, wordsOf({1, 2, 3}));
    packet[8] = 0;
    uint32_t word = 0;
    EXPECT_EQ(HoxiPutCommand(0, packet.data(), 24, &word), 0u);
    EXPECT_EQ(stateOf(5), "133:3:5");
}

TEST_F(CaptureCommandsTest, FieldsThatAreMissingAreRefused) {
    openSmall();
    for (const uint32_t code : {70u, 71u, 74u, 75u, 30u, 31u, 32u, 33u, 34u, 35u, 36u, 77u, 78u, 50u}) {
        EXPECT_EQ(put(0, code, code, std::vector<uint8_t>(11)), 0u);
        EXPECT_EQ(nextBriefs(2), "133:1:" + std::to_string(code) + " 133:6:" + std::to_string(code));
    }
    EXPECT_EQ(put(0, 72, 1, std::vector<uint8_t>(3)), 0u);
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:6:1");
}

TEST_F(CaptureCommandsTest, OneCaptureAtATime) {
    openWaiting();
    send(70, 1, {1, 1, 1});
    EXPECT_EQ(nextBriefs(3), "133:1:1 132:2:1 132:2:1");
    for (const uint32_t code : {70u, 74u, 30u, 31u}) {
        send(code, code, {2, 1, 1});
        EXPECT_EQ(nextBriefs(2), "133:1:" + std::to_string(code) + " 133:8:" + std::to_string(code));
    }
}

TEST_F(CaptureCommandsTest, OtherCommandsAreAnsweredMeanwhile) {
    openWaiting();
    send(70, 1, {4, 5, 1});
    EXPECT_EQ(nextBriefs(3), "133:1:1 132:2:1 132:2:1");
    send(0, 2);
    EXPECT_EQ(next().brief(), "1:3:2");
    send(81, 3);
    EXPECT_EQ(next().brief(), "133:1:3");
    const SeenReport standing = next();
    EXPECT_EQ(standing.brief(), "131:3:3");
    EXPECT_EQ(standing.words(4), "1 4 5 2");
    EXPECT_EQ(next().brief(), "133:3:3");
}

TEST_F(CaptureCommandsTest, AbortEndsTheCaptureWithoutAnImage) {
    openWaiting();
    send(70, 1, {1, 1, 1});
    EXPECT_EQ(nextBriefs(3), "133:1:1 132:2:1 132:2:1");
    send(72, 2, {0});
    EXPECT_EQ(next().brief(), "133:1:2");
    const SeenReport aborted = next();
    EXPECT_EQ(aborted.brief(), "132:4:1");
    EXPECT_EQ(aborted.words(4), "1 1 1 14");
    EXPECT_EQ(nextBriefs(2), "133:4:1 133:3:2");
    send(83, 3, {1, 1, 1});
    EXPECT_EQ(stateOf(3), "133:5:3");
    send(81, 4);
    EXPECT_EQ(next().brief(), "133:1:4");
    EXPECT_EQ(next().words(4), "1 1 1 14");
}

TEST_F(CaptureCommandsTest, ScanKeyIsThePersonTouching) {
    openWaiting();
    send(70, 1, {1, 1, 1});
    EXPECT_EQ(nextBriefs(3), "133:1:1 132:2:1 132:2:1");
    send(72, 2, {1});
    EXPECT_EQ(progress(untilComplete(1), "1 1 1"), "3 4 10 11 13");
}

TEST_F(CaptureCommandsTest, SaveKeyTakesWhatThereIs) {
    openSmall("contact_ms = 3600000\ncapture_ms = 3600000\n");
    send(70, 1, {1, 1, 1});
    send(72, 2, {2});
    EXPECT_EQ(progress(untilComplete(1), "1 1 1"), "1 2 3 4 10 11 13");
    EXPECT_EQ(fetchImage(3, 1, 1, 1, 1200).size(), 1200u);
}

TEST_F(CaptureCommandsTest, StopWithoutACaptureIsCompleteAndOtherChoicesAreRefused) {
    openSmall();
    for (uint32_t choice = 0; choice < 3; ++choice) {
        send(72, choice, {choice});
        EXPECT_EQ(nextBriefs(2), "133:1:" + std::to_string(choice) + " 133:3:" + std::to_string(choice));
    }
    send(72, 3, {3});
    EXPECT_EQ(nextBriefs(2), "133:1:3 133:6:3");
}

TEST_F(CaptureCommandsTest, FinishEndsTheCaptureOfItsImageOnly) {
    openSmall("contact_ms = 3600000\ncapture_ms = 3600000\n");
    send(74, 1, {1, 2, 1});
    send(78, 2, {2, 2, 1});
    EXPECT_EQ(stateOf(2), "133:5:2");
    send(78, 3, {1, 2, 1});
    EXPECT_EQ(stateOf(1), "133:3:1");
    EXPECT_EQ(next().brief(), "133:3:3");
    send(78, 4, {1, 2, 1});
    EXPECT_EQ(nextBriefs(2), "133:1:4 133:3:4");
}

TEST_F(CaptureCommandsTest, ReinitGivesTheCaptureUp) {
    openWaiting();
    send(70, 1, {1, 1, 1});
    send(79, 2);
    EXPECT_EQ(stateOf(1), "133:4:1");
}

TEST_F(CaptureCommandsTest, ResetForgetsTheCapture) {
    openSmall("contact_ms = 3600000\noff_bus_ms = 0\nboot_ms = 20\n");
    send(70, 2, {1, 1, 1});
    EXPECT_EQ(nextBriefs(3), "133:1:2 132:2:2 132:2:2");
    send(1, 3);
    EXPECT_EQ(nextBriefs(2), "133:1:3 2:3:0");
    send(81, 4);
    EXPECT_EQ(next().brief(), "133:1:4");
    EXPECT_EQ(next().words(4), "0 0 0 0");
}

TEST_F(CaptureCommandsTest, ImageIsLostWithAReset) {
    openSmall("off_bus_ms = 0\nboot_ms = 20\n");
    captureFinger(1, 1);
    send(1, 3);
    EXPECT_EQ(nextBriefs(2), "133:1:3 2:3:0");
    send(83, 4, {1, 1, 1});
    EXPECT_EQ(stateOf(4), "133:5:4");
}

TEST_F(CaptureCommandsTest, NoTwoFingersAreAlikeAndAllAreTheSameNextTime) {
    std::vector<uint8_t> runs[2][3];
    for (auto& run : runs) {
        openSmall();
        run[0] = captureFinger(1, 1);
        run[1] = captureFinger(3, 1);
        run[2] = captureFinger(5, 2);
        HoxiTerminate();
        chooseText("# another, so that the scanners are made anew");
        open();
        HoxiTerminate();
    }
    EXPECT_EQ(runs[0][0], runs[1][0]);
    EXPECT_EQ(runs[0][1], runs[1][1]);
    EXPECT_EQ(runs[0][2], runs[1][2]);
    EXPECT_NE(runs[0][0], runs[0][1]);
    EXPECT_NE(runs[0][1], runs[0][2]);
}

TEST_F(CaptureCommandsTest, AnotherSeedMakesAnotherFinger) {
    openSmall();
    const std::vector<uint8_t> first = captureFinger(1, 1);
    HoxiTerminate();
    openSmall("seed = 2\n");
    EXPECT_NE(captureFinger(1, 1), first);
}

TEST_F(CaptureCommandsTest, CalibrationLooksAtTheEmptyPlatenAtOnce) {
    openWaiting();
    send(30, 1, {1, 4, 2});
    const std::vector<SeenReport> reports = untilComplete(1);
    EXPECT_EQ(reports.back().brief(), "133:3:1");
    EXPECT_EQ(progress(reports, "1 1 38"), "1 4 10 11 13");
    EXPECT_EQ((reports.end() - 2)->word(32), 13u);
}

TEST_F(CaptureCommandsTest, CheckReportsTheQualityOfThePlaten) {
    openSmall();
    const uint32_t codes[] = {31, 33, 35};
    const uint32_t statuses[] = {30, 31, 32};
    const uint32_t scanTypes[] = {38, 40, 39};
    const uint32_t pixels[] = {40 * 30, 43 * 33, 41 * 31};
    for (size_t i = 0; i < 3; ++i) {
        const auto tag = static_cast<uint32_t>(i);
        send(codes[i], tag, {9, 4, 2});
        const std::vector<SeenReport> reports = untilComplete(tag);
        const SeenReport& quality = *(reports.end() - 3);
        EXPECT_EQ(quality.brief(), std::to_string(statuses[i]) + ":3:" + std::to_string(tag));
        EXPECT_EQ(quality.size, 28u);
        const std::string start = std::to_string(tag) + " 9 " + std::to_string(scanTypes[i]);
        EXPECT_EQ(quality.words(4), start + " " + std::to_string(pixels[i]));
        EXPECT_GT(quality.word(44), 150u);
        EXPECT_EQ((reports.end() - 2)->word(32), 13u);
        EXPECT_FALSE(fetchImage(100, 9, scanTypes[i], 1, pixels[i]).empty());
    }
}

TEST_F(CaptureCommandsTest, ResolutionChangesLaterCapturesOfItsCameras) {
    openSmall();
    send(50, 1, {1, 1, 1000});
    send(70, 2, {1, 1, 1});
    send(71, 3, {2, 1, 1});
    EXPECT_EQ(stateOf(2), "133:3:2");
    send(71, 3, {2, 1, 1});
    EXPECT_EQ(stateOf(3), "133:3:3");
    send(83, 4, {1, 1, 1});
    EXPECT_EQ(next().brief(), "133:1:4");
    EXPECT_EQ(next().words(9), "1 1 1 60 80 80 8 1000 1000");
    send(83, 5, {2, 1, 1});
    EXPECT_EQ(nextBriefs(2), "133:3:4 133:1:5");
    EXPECT_EQ(next().words(9), "2 1 1 33 43 43 8 500 500");
}

TEST_F(CaptureCommandsTest, ResolutionHasLimits) {
    openSmall();
    const auto state = [&](uint32_t cameras, uint32_t unit, uint32_t resolution) {
        send(50, 1, {cameras, unit, resolution});
        return next().state == 1 ? next().state : 0;
    };
    EXPECT_EQ(state(1, 0, 49), 6);
    EXPECT_EQ(state(1, 0, 50), 3);
    EXPECT_EQ(state(1, 1, 1200), 3);
    EXPECT_EQ(state(1, 1, 1201), 6);
    EXPECT_EQ(state(1, 2, 197), 3);  // per centimetre
    EXPECT_EQ(state(1, 2, 1000), 6);
    EXPECT_EQ(state(1, 3, 500), 6);
    EXPECT_EQ(state(0, 1, 500), 6);
    EXPECT_EQ(state(15, 1, 500), 3);
    EXPECT_EQ(state(16, 1, 500), 6);
    EXPECT_EQ(state(1, 1, 0xFFFFFFFF), 6);
    EXPECT_EQ(state(1, 2, 0xFFFFFFFF), 6);
}

TEST_F(CaptureCommandsTest, CaptureFailsWhenTheMemoryIsFull) {
    openSmall("image_memory = 2400\n");
    captureFinger(1, 1);
    captureFinger(3, 2);
    captureFinger(5, 2);
    send(70, 7, {3, 1, 1});
    const std::vector<SeenReport> reports = untilComplete(7);
    EXPECT_EQ(reports.back().brief(), "133:7:7");
    EXPECT_EQ(progress(reports, "7 3 1"), "1 2 3 4 10 11 15");
    send(12, 8, {1, 1, 1});
    EXPECT_EQ(stateOf(8), "133:3:8");
    captureFinger(9, 3);
}

TEST_F(CaptureCommandsTest, ImagesThatCannotBeHeldAreDescribedAndCannotBeFetched) {
    openText("[[scanner]]\nfinger_width = 0\nslap_width = 0xFFFFFFFF\nslap_height = 0xFFFFFFFF\n");
    send(70, 1, {1, 1, 1});
    EXPECT_EQ(stateOf(1), "133:3:1");
    send(74, 2, {2, 1, 1});
    EXPECT_EQ(stateOf(2), "133:3:2");
    send(83, 3, {1, 1, 1});
    EXPECT_EQ(next().brief(), "133:1:3");
    EXPECT_EQ(next().words(6), "1 1 1 750 0 0");
    send(83, 4, {2, 1, 1});
    EXPECT_EQ(nextBriefs(2), "133:3:3 133:1:4");
    EXPECT_EQ(next().words(6), "2 1 1 4294967295 4294967295 4294967295");
    next();
    for (const uint32_t handle : {1u, 2u}) {
        for (const uint32_t byteCount : {0u, 1u, 0xFFFFFFFFu}) {
            send(10, 5, {handle, 1, 1, byteCount});
            EXPECT_EQ(stateOf(5), "133:6:5");
        }
        send(84, 6, {handle, 1});
        EXPECT_EQ(nextBriefs(3), "133:1:6 53:3:6 133:3:6");
    }
}

TEST_F(CaptureCommandsTest, ProgressAndCompletionCanBeMadeToMisbehave) {
    openSmall(
        "[[answer_fault]]\ncommand = 70\nstage = 'progress'\npart = 7\nword = 3\nvalue = 12\n"
        "[[answer_fault]]\ncommand = 70\nstage = 'progress'\npart = 2\ndrop = true\n"
        "[[answer_fault]]\ncommand = 70\nstate = 2\n");
    send(70, 1, {1, 1, 1});
    std::vector<SeenReport> reports;
    for (int i = 0; i < 8; ++i) {
        reports.push_back(next());
    }
    EXPECT_EQ(progress(reports, "1 1 1"), "1 3 4 10 11 12");
    EXPECT_EQ(reports.back().brief(), "133:2:1");
}

}  // namespace
}  // namespace simulator
