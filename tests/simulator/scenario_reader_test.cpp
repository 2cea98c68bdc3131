#include "simulator/scenario_reader.h"

#include <filesystem>
#include <fstream>
#include <string>

#include "simulator/results.h"
#include "simulator/scenario_keys.h"
#include "simulator_test.h"

namespace simulator {
namespace {

std::string errorOf(const std::string& toml) {
    Scenario scenario;
    std::string error;
    const bool usable = readScenario({"f.toml", "", toml}, scenario, error);
    EXPECT_EQ(usable, error.empty());
    return error;
}

Scenario read(const std::string& toml) {
    Scenario scenario;
    std::string error;
    EXPECT_TRUE(readScenario({"f.toml", "", toml}, scenario, error)) << error;
    return scenario;
}

TEST(ScenarioReaderTest, EmptyTextIsOneHealthyScanner) {
    const Scenario scenario = read("");
    EXPECT_EQ(scannerCount(scenario), 1u);
    EXPECT_EQ(scannerPlan(scenario, 0).model, "MX1400");
    EXPECT_EQ(scannerPlan(scenario, 0).serial, "SIM-0001");
}

TEST(ScenarioReaderTest, ScannersBeyondTheDescribedOnesAreHealthy) {
    const Scenario scenario = read("library.scanners = 12\n[[scanner]]\nmodel = 'M'\n");
    EXPECT_EQ(scannerCount(scenario), 12u);
    EXPECT_EQ(scannerPlan(scenario, 0).model, "M");
    EXPECT_EQ(scannerPlan(scenario, 11).model, "MX1400");
    EXPECT_EQ(scannerPlan(scenario, 11).serial, "SIM-0012");
}

TEST(ScenarioReaderTest, SyntaxErrorNamesFileAndLine) {
    EXPECT_EQ(errorOf("\n\nlibrary = [").substr(0, 9), "f.toml:3:");
}

TEST(ScenarioReaderTest, UnknownNamesAreRefused) {
    EXPECT_EQ(errorOf("\n[camera]\n"), "f.toml:2: camera: there is no such table");
    EXPECT_EQ(errorOf("[[scanner]]\n\nmodell = 'M'\n"), "f.toml:3: scanner.modell: there is no such key");
    EXPECT_EQ(errorOf("[[answer_fault]]\nstage = 'late'\n"), "f.toml:2: answer_fault.stage: \"late\" is not known");
}

TEST(ScenarioReaderTest, WrongTypesAreRefused) {
    EXPECT_EQ(errorOf("library = 1"), "f.toml:1: library: must be a table [library]");
    EXPECT_EQ(errorOf("[scanner]"), "f.toml:1: scanner: must be a list of tables [[scanner]]");
    EXPECT_EQ(errorOf("scanner = [1]"), "f.toml:1: scanner: must be a list of tables [[scanner]]");
    EXPECT_EQ(errorOf("[[scanner]]\nmodel = 3"), "f.toml:2: scanner.model: must be a text");
    EXPECT_EQ(errorOf("[[scanner]]\nyear = '3'"), "f.toml:2: scanner.year: must be a whole number");
    EXPECT_EQ(errorOf("[[scanner]]\nyear = 3.0"), "f.toml:2: scanner.year: must be a whole number");
    EXPECT_EQ(errorOf("[[scanner]]\nboot_report = 1"), "f.toml:2: scanner.boot_report: must be true or false");
    EXPECT_EQ(errorOf("[[call_fault]]\nfunction = 1"), "f.toml:2: call_fault.function: must be a text");
    EXPECT_EQ(errorOf("[[report]]\nwords = 1"), "f.toml:2: report.words: must be a list of whole numbers");
    EXPECT_EQ(errorOf("[[report]]\nwords = [\n1,\n'2']"), "f.toml:4: report.words: must be a whole number");
}

TEST(ScenarioReaderTest, BothEndsOfARangeAreKept) {
    EXPECT_EQ(read("[[scanner]]\nmonth = 0").scanners[0].month, 0);
    EXPECT_EQ(read("[[scanner]]\nmonth = 255").scanners[0].month, 255);
    EXPECT_EQ(errorOf("[[scanner]]\nmonth = -1"), "f.toml:2: scanner.month: -1 is not within 0 to 255");
    EXPECT_EQ(errorOf("[[scanner]]\nmonth = 256"), "f.toml:2: scanner.month: 256 is not within 0 to 255");
    EXPECT_EQ(read("[[scanner]]\nmake = '12345678'").scanners[0].make, "12345678");
    EXPECT_EQ(errorOf("[[scanner]]\nmake = '123456789'"), "f.toml:2: scanner.make: is longer than 8 bytes");
}

TEST(ScenarioReaderTest, ListsAreBounded) {
    std::string words = "1";
    for (int i = 1; i < 42; ++i) {
        words += ", 1";
    }
    EXPECT_EQ(read("[[report]]\ncode = 1\nwords = [" + words + "]").reports[0].words.size(), 42u);
    EXPECT_EQ(errorOf("[[report]]\ncode = 1\nwords = [1, " + words + "]"),
              "f.toml:3: report.words: has more than 42 numbers");
}

TEST(ScenarioReaderTest, RequiredKeysAreAskedFor) {
    EXPECT_EQ(errorOf("\n[[report]]\n"), "f.toml:2: report.code: is missing");
    EXPECT_EQ(errorOf("[[call_fault]]\nresult = 1"), "f.toml:1: call_fault.function: is missing");
}

TEST(ScenarioReaderTest, ValuesMustGoTogether) {
    EXPECT_EQ(errorOf("library.scanners = 1\n[[scanner]]\n[[scanner]]\n"),
              "f.toml:3: scanner: more scanners are described than library.scanners says");
    EXPECT_EQ(errorOf("[[scanner]]\noff_bus_ms = 2\nboot_ms = 1"),
              "f.toml:1: scanner: boot_ms is shorter than off_bus_ms");
    EXPECT_EQ(errorOf("[[report]]\ncode = 1\nscanner = 1"),
              "f.toml:1: report: scanner 1 does not exist, the bus has 1");
    EXPECT_EQ(errorOf("[[answer_fault]]\ncommand = 1"),
              "f.toml:1: answer_fault: none of drop, delay_ms, state and value is given");
    EXPECT_EQ(errorOf("[[transfer_fault]]\nfunction = 'HoxiGetImage'"),
              "f.toml:1: transfer_fault: none of result, move, claim_more, corrupt and last_flag is given");
    EXPECT_EQ(errorOf("[[transfer_fault]]\nfunction = 'HoxiPutImage'\nlast_flag = 'set'"),
              "f.toml:1: transfer_fault: only HoxiGetImage and HoxiGetMemory have a last flag");
    EXPECT_EQ(errorOf("[[transfer_fault]]\nfunction = 'HoxiGetImage'\nmove = 0\nscanner = 1"),
              "f.toml:1: transfer_fault: scanner 1 does not exist, the bus has 1");
    EXPECT_EQ(errorOf("[[transfer_fault]]\nfunction = 'HoxiGetStatus'\nmove = 0"),
              "f.toml:2: transfer_fault.function: \"HoxiGetStatus\" is not known");
    EXPECT_EQ(errorOf("[[unplug]]\n"), "f.toml:1: unplug: none of at_ms, after_commands and after_reports is given");
    EXPECT_EQ(errorOf("[[call_fault]]\nfunction = 'HoxiBusReset'\nresult = 1\nscanner = 0"),
              "f.toml:1: call_fault: the function is of no scanner");
    EXPECT_EQ(errorOf("[[call_fault]]\nfunction = 'HoxiGetStatus'\nresult = 1\ncommand = 0"),
              "f.toml:1: call_fault: only HoxiPutCommand has a command");
}

TEST(ScenarioReaderTest, BodyMustFitIntoAReport) {
    const std::string start = "[[report]]\ncode = 200\nbytes = [1]\ntext = '";
    EXPECT_EQ(errorOf(start + std::string(166, 'x') + "'"), "");
    EXPECT_EQ(errorOf(start + std::string(167, 'x') + "'"),
              "f.toml:1: report: the body has 169 bytes, a report holds 168");
    EXPECT_EQ(errorOf(start + std::string(167, 'x') + "'\nterminated = false"), "");
}

using ScenarioFileTest = SimulatorTest;

TEST_F(ScenarioFileTest, BadScenarioKeepsTheLibraryClosedAndSaysWhy) {
    chooseText("\nlibrary.scanners = 65\n");
    testing::internal::CaptureStderr();
    uint32_t count = 9;
    EXPECT_EQ(HoxiInitialize(1000, &count), kBadScenario);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "simulated scanner: " + textPath() + ":2: library.scanners: 65 is not within 0 to 64\n");
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(HoxiTerminate(), kNotOpen);
    EXPECT_EQ(openText("library.scanners = 64\n"), 64u);
}

TEST_F(ScenarioFileTest, MissingFileAndFolderAreRefused) {
    chooseText("");
    std::filesystem::remove(textPath());
    uint32_t count = 0;
    testing::internal::CaptureStderr();
    EXPECT_EQ(HoxiInitialize(1000, &count), kBadScenario);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "simulated scanner: " + textPath() + ": cannot be read\n");
    std::filesystem::create_directory(textPath());
    testing::internal::CaptureStderr();
    EXPECT_EQ(HoxiInitialize(1000, &count), kBadScenario);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "simulated scanner: " + textPath() + ": cannot be read\n");
}

TEST_F(ScenarioFileTest, LargestFileIsReadAndALargerOneIsNot) {
    EXPECT_EQ(openText(std::string(262'144, '\n')), 1u);
    HoxiTerminate();
    chooseText(std::string(262'145, '\n'));
    uint32_t count = 0;
    testing::internal::CaptureStderr();
    EXPECT_EQ(HoxiInitialize(1000, &count), kBadScenario);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "simulated scanner: " + textPath() + ": is larger than 262144 bytes\n");
}

// The manual has one row for every key, with the type, range and default that the reader goes by.
TEST(ScenarioManualTest, ManualAndReaderAgree) {
    std::ifstream file(std::string(TAMTEST_SOURCE_DIR) + "/docs/simulated-scanner.md");
    std::string section;
    std::string documented;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("### `", 0) == 0) {
            section = line.substr(5, line.find('`', 5) - 5);
        } else if (!section.empty() && line.rfind("| `", 0) == 0) {
            size_t end = 0;
            for (int column = 0; column < 4; ++column) {
                end = line.find(" |", end + 1);
            }
            documented += section + " " + line.substr(0, end) + "\n";
        } else if (line.rfind("## ", 0) == 0) {
            section.clear();
        }
    }
    std::string known;
    for (const KeyText& key : describeKeys()) {
        const bool single = key.section == "library";
        known += (single ? "[" : "[[") + key.section + (single ? "]" : "]]") + " | `" + key.name + "` | " + key.type +
                 " | " + key.range + " | " + key.start + "\n";
    }
    EXPECT_EQ(documented, known);
}

}  // namespace
}  // namespace simulator
