// Every file of the scenarios folder does what its first lines say.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "hoxi/hoxi_codes.h"
#include "platform/clock.h"
#include "simulator/results.h"
#include "simulator/scenario_reader.h"
#include "simulator_test.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

class ScenariosTest : public SimulatorTest {
protected:
    // Sends and fetches the first report of the answer.
    std::string ask(uint32_t code, uint32_t tag, uint32_t scanner = 0) {
        EXPECT_EQ(put(scanner, code, tag), 0u);
        return next(scanner).brief();
    }
    // What ReSeT does between its command and the new session.
    HoxiResult restart(uint32_t& count) {
        EXPECT_EQ(HoxiTerminate(), 0u);
        platform::sleepMs(30'000);
        return HoxiInitialize(1000, &count);
    }
};

TEST_F(ScenariosTest, Healthy) {
    EXPECT_EQ(openFile("healthy"), 1u);
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
}

// The file spells out what the built-in scanner is.
TEST_F(ScenariosTest, HealthyIsTheBuiltInScanner) {
    std::string runs[2];
    for (std::string& run : runs) {
        open();
        put(0, hoxi::CMD_SEND_VERS, 1);
        put(0, hoxi::CMD_SEND_IMG_VERS, 2);
        for (int i = 0; i < 6; ++i) {
            const SeenReport report = next();
            run.append(report.bytes.begin(), report.bytes.end());
        }
        char version[20];
        EXPECT_EQ(HoxiGetVersion(version, sizeof version), 0u);
        uint64_t sizes[3] = {};
        EXPECT_EQ(HoxiGetBufSize(0, &sizes[0], &sizes[1], &sizes[2]), 0u);
        run += version;
        for (const uint64_t size : sizes) {
            run += " " + std::to_string(size);
        }
        HoxiTerminate();
        chooseFile("healthy");
    }
    EXPECT_EQ(runs[0], runs[1]);
}

TEST_F(ScenariosTest, NoScanner) {
    EXPECT_EQ(openFile("no-scanner"), 0u);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 1), kNoSuchScanner);
    EXPECT_EQ(HoxiTerminate(), 0u);
}

TEST_F(ScenariosTest, EightScanners) {
    EXPECT_EQ(openFile("eight-scanners"), 8u);
    const char* const models[] = {"MX1100", "MX1200", "MX1300", "MX1400", "MXRB-2", "MX1400", "MX1400", "MX1400"};
    for (uint32_t scanner = 0; scanner < 8; ++scanner) {
        EXPECT_EQ(ask(hoxi::CMD_SEND_VERS, 9, scanner), "133:1:9");
        const SeenReport version = next(scanner);
        EXPECT_EQ(version.text(28, 16), models[scanner]);
        EXPECT_EQ(version.text(44, 16), "EIGHT-" + std::to_string(scanner + 1));
    }
}

TEST_F(ScenariosTest, TooManyScanners) {
    EXPECT_EQ(openFile("too-many-scanners"), 12u);
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1, 7), "1:3:1");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 2, 11), "1:3:2");
}

TEST_F(ScenariosTest, InitializeFails) {
    chooseFile("initialize-fails");
    uint32_t count = 9;
    EXPECT_EQ(HoxiInitialize(1000, &count), 9000u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(HoxiInitialize(1000, &count), 9000u);
    EXPECT_EQ(HoxiTerminate(), kNotOpen);
}

TEST_F(ScenariosTest, SecondInitializeFails) {
    EXPECT_EQ(openFile("second-initialize-fails"), 1u);
    uint32_t count = 0;
    EXPECT_EQ(restart(count), 9000u);
    EXPECT_EQ(HoxiInitialize(1000, &count), 0u);
}

TEST_F(ScenariosTest, BufferSizeFails) {
    EXPECT_EQ(openFile("buffer-size-fails"), 3u);
    uint64_t size = 0;
    EXPECT_EQ(HoxiGetBufSize(0, &size, &size, &size), 0u);
    EXPECT_EQ(HoxiGetBufSize(1, &size, &size, &size), 9012u);
    EXPECT_EQ(HoxiGetBufSize(1, &size, &size, &size), 9012u);
    EXPECT_EQ(HoxiGetBufSize(2, &size, &size, &size), 0u);
}

TEST_F(ScenariosTest, TerminateFails) {
    openFile("terminate-fails");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
    EXPECT_EQ(HoxiTerminate(), 77u);
    EXPECT_EQ(HoxiTerminate(), kNotOpen);
}

TEST_F(ScenariosTest, SettingsRefused) {
    openFile("settings-refused");
    char text[20] = "#";
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(HoxiSetTimeouts(1000, 1000), 9013u);
        EXPECT_EQ(HoxiBreakEnable(1), 9014u);
        EXPECT_EQ(HoxiBusReset(), 9015u);
        EXPECT_EQ(HoxiGetVersion(text, sizeof text), 9016u);
    }
    EXPECT_STREQ(text, "");
}

TEST_F(ScenariosTest, CommandRefused) {
    openFile("command-refused");
    EXPECT_EQ(put(0, hoxi::CMD_SEND_VERS, 1), 9020u);
    EXPECT_EQ(put(0, hoxi::CMD_SEND_VERS, 2), 0u);
    for (const HoxiResult result : {0u, 0u, 9021u, 0u, 9021u, 0u, 9021u}) {
        EXPECT_EQ(put(0, hoxi::CMD_NOP, 3), result);
    }
    EXPECT_EQ(put(0, hoxi::CMD_FREE_IMAGE, 4), 0u);
}

TEST_F(ScenariosTest, EveryCommandRefused) {
    openFile("every-command-refused");
    for (const uint32_t code : {0u, 1u, 5u, 200u}) {
        EXPECT_EQ(put(0, code, 1), 0xFFFFFFFFu);
    }
}

TEST_F(ScenariosTest, CompletionMissing) {
    openFile("completion-missing");
    put(0, hoxi::CMD_NOP, 1);
    put(0, hoxi::CMD_NOP, 2);
    put(0, hoxi::CMD_SEND_VERS, 3);
    put(0, hoxi::CMD_SEND_VERS, 4);
    put(0, hoxi::CMD_NOP, 5);
    EXPECT_EQ(nextBriefs(6), "1:3:1 133:1:3 4:3:3 133:1:4 4:3:4 1:3:5");
}

TEST_F(ScenariosTest, CompletionLate) {
    openFile("completion-late");
    const uint64_t start = platform::nowMs();
    put(0, hoxi::CMD_NOP, 1);
    const std::string first = next().brief();
    EXPECT_GE(platform::nowMs(), start + 3000);
    EXPECT_EQ(first, "1:3:1");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 2), "1:3:2");
}

TEST_F(ScenariosTest, CompletionWrongState) {
    openFile("completion-wrong-state");
    put(0, hoxi::CMD_SEND_VERS, 1);
    put(0, hoxi::CMD_SEND_VERS, 2);
    put(0, hoxi::CMD_NOP, 3);
    put(0, hoxi::CMD_SEND_VERS, 4);
    EXPECT_EQ(nextBriefs(10), "133:1:1 4:3:1 133:5:1 133:1:2 4:3:2 133:-1:2 1:4:3 133:1:4 4:3:4 133:-1:4");
}

TEST_F(ScenariosTest, ResetNotConfirmed) {
    openFile("reset-not-confirmed");
    put(0, hoxi::CMD_RESET, 1);
    EXPECT_EQ(next().brief(), "2:3:0");
}

TEST_F(ScenariosTest, ResetNotCompleted) {
    EXPECT_EQ(openFile("reset-not-completed"), 2u);
    EXPECT_EQ(ask(hoxi::CMD_RESET, 1, 0), "133:1:1");
    EXPECT_EQ(ask(hoxi::CMD_RESET, 2, 1), "133:1:2");
    uint32_t count = 0;
    EXPECT_EQ(restart(count), 0u);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(next(0).brief(), "2:3:0");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 3, 1), "1:3:3");
}

TEST_F(ScenariosTest, ResetStaysAway) {
    EXPECT_EQ(openFile("reset-stays-away"), 1u);
    EXPECT_EQ(ask(hoxi::CMD_RESET, 1), "133:1:1");
    uint32_t count = 9;
    EXPECT_EQ(restart(count), 0u);
    EXPECT_EQ(count, 0u);
}

TEST_F(ScenariosTest, ResetFetchFails) {
    openFile("reset-fetch-fails");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
    EXPECT_EQ(ask(hoxi::CMD_RESET, 2), "133:1:2");
    uint32_t count = 0;
    EXPECT_EQ(restart(count), 0u);
    EXPECT_EQ(failedFetch(), 9030u);
    EXPECT_EQ(next().brief(), "2:3:0");
}

TEST_F(ScenariosTest, FetchTimesOut) {
    openFile("fetch-times-out");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
    put(0, hoxi::CMD_NOP, 2);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(failedFetch(), hoxi::kResultTimedOut);
    }
    EXPECT_EQ(next().brief(), "1:3:2");
}

TEST_F(ScenariosTest, FetchFails) {
    openFile("fetch-fails");
    put(0, hoxi::CMD_NOP, 1);
    for (uint32_t tag = 1; tag <= 2; ++tag) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(failedFetch(), 9040u);
        }
        EXPECT_EQ(next().brief(), "1:3:" + std::to_string(tag));
        put(0, hoxi::CMD_NOP, tag + 1);
    }
}

TEST_F(ScenariosTest, FetchSaysGone) {
    openFile("fetch-says-gone");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 2), "1:3:2");
    EXPECT_EQ(failedFetch(), hoxi::kResultScannerGone);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 3), 0u);
}

TEST_F(ScenariosTest, FetchSaysClosed) {
    openFile("fetch-says-closed");
    EXPECT_EQ(failedFetch(), hoxi::kResultLibraryClosed);
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
}

TEST_F(ScenariosTest, UnpluggedAfterTime) {
    const uint64_t start = platform::nowMs();
    ASSERT_EQ(openFile("unplugged-after-time"), 2u);
    EXPECT_EQ(failedFetch(0), hoxi::kResultScannerGone);
    EXPECT_GE(platform::nowMs(), start + 5000);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 1), hoxi::kResultScannerGone);
    EXPECT_EQ(ask(hoxi::CMD_NOP, 2, 1), "1:3:2");
}

TEST_F(ScenariosTest, UnpluggedAfterCommands) {
    openFile("unplugged-after-commands");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 1), "1:3:1");
    EXPECT_EQ(ask(hoxi::CMD_NOP, 2), "1:3:2");
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 3), 0u);
    EXPECT_EQ(failedFetch(), hoxi::kResultScannerGone);
    EXPECT_EQ(put(0, hoxi::CMD_NOP, 4), hoxi::kResultScannerGone);
}

TEST_F(ScenariosTest, TextMessages) {
    openFile("text-messages");
    EXPECT_EQ(next().text(20, 168), "Scanner ready");
    for (int i = 0; i < 3; ++i) {
        const SeenReport reminder = next();
        EXPECT_EQ(reminder.code, 200u);
        EXPECT_EQ(reminder.text(20, 168), "Please clean the platen");
    }
    put(0, hoxi::CMD_NOP, 1);
    std::set<std::string> rest{next().text(20, 168), next().text(20, 168)};
    EXPECT_EQ(rest, (std::set<std::string>{"", "100% done, %d %s %n %%"}));
}

TEST_F(ScenariosTest, TextWithoutEnd) {
    openFile("text-without-end");
    const SeenReport message = next();
    EXPECT_EQ(message.code, 200u);
    EXPECT_EQ(message.text(20, 168), "no end" + std::string(162, '.'));
    const SeenReport version = next();
    EXPECT_EQ(version.code, 4u);
    EXPECT_EQ(version.text(20, 8), "MAKE-8-B");
    EXPECT_EQ(version.text(28, 16), "MODEL-16-BYTES-L");
    EXPECT_EQ(version.text(44, 16), "SERIAL-16-BYTES-");
    EXPECT_EQ(version.text(64, 12), "XXXXXXXXXXXX");
}

TEST_F(ScenariosTest, MalformedReports) {
    openFile("malformed-reports");
    const SeenReport list = next();
    EXPECT_EQ(list.code, 135u);
    EXPECT_EQ(list.word(20), 0xFFFFFFFFu);
    EXPECT_EQ(list.bytes[187], 0x11);
    for (const uint32_t count : {0xFFFFFFFFu, 1000u}) {
        const SeenReport serial = next();
        EXPECT_EQ(serial.code, 141u);
        EXPECT_EQ(serial.word(24), count);
    }
    EXPECT_EQ(next().text(20, 168), std::string(168, 'D'));
    const SeenReport status = next();
    EXPECT_EQ(status.brief(), "133:3:0");
    EXPECT_EQ(status.size, 0xFFFFFFFFu);
}

TEST_F(ScenariosTest, UnknownCodes) {
    openFile("unknown-codes");
    EXPECT_EQ(nextBriefs(5), "99:0:1 255:0:2 256:0:3 65536:0:4 4294967295:0:5");
}

// All 160,000 reports are counted in the tests of the bus.
TEST_F(ScenariosTest, Flood) {
    EXPECT_EQ(openFile("flood"), 8u);
    for (uint32_t tag = 1; tag <= 100; ++tag) {
        for (uint32_t scanner = 0; scanner < 8; ++scanner) {
            EXPECT_EQ(next(scanner).brief(), "132:0:" + std::to_string(tag));
        }
    }
}

TEST_F(ScenariosTest, SteadyStream) {
    const uint64_t start = platform::nowMs();
    openFile("steady-stream");
    for (uint32_t tag = 1; tag <= 100; ++tag) {
        EXPECT_EQ(next().brief(), "132:0:" + std::to_string(tag));
    }
    EXPECT_GE(platform::nowMs(), start + 9900);
}

// "reset-not-confirmed" as a test is called: ResetNotConfirmed.
std::string testName(const std::string& fileName) {
    std::string name;
    bool capital = true;
    for (const char character : fileName) {
        if (character != '-') {
            name += capital ? static_cast<char>(character - 'a' + 'A') : character;
        }
        capital = character == '-';
    }
    return name;
}

bool isOfScenarios(const std::string& suite) {
    return suite == "ScenariosTest" || suite == "ImageScenariosTest" || suite == "MemoryScenariosTest";
}

TEST(ScenarioFolderTest, EveryFileIsUsableIntroducedAndTested) {
    std::set<std::string> tests;
    for (int i = 0; i < testing::UnitTest::GetInstance()->total_test_suite_count(); ++i) {
        const testing::TestSuite* const each = testing::UnitTest::GetInstance()->GetTestSuite(i);
        for (int j = 0; isOfScenarios(each->name()) && j < each->total_test_count(); ++j) {
            tests.insert(each->GetTestInfo(j)->name());
        }
    }
    for (const auto& entry : fs::directory_iterator(std::string(TAMTEST_SOURCE_DIR) + "/scenarios")) {
        std::ifstream file(entry.path());
        ScenarioText text{entry.path().string(), "", {std::istreambuf_iterator<char>(file), {}}};
        Scenario scenario;
        std::string error;
        EXPECT_TRUE(readScenario(text, scenario, error)) << error;
        EXPECT_EQ(text.text.rfind("# ", 0), 0u) << entry.path();
        EXPECT_NE(text.text.find("# You will see: "), std::string::npos) << entry.path();
        EXPECT_EQ(tests.count(testName(entry.path().stem().string())), 1u) << entry.path();
    }
}

}  // namespace
}  // namespace simulator
