#include "simulator_test.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "simulator/bus.h"
#include "support/test_clock.h"

namespace simulator {

namespace {

void setScenario(const std::string& path) {
#if defined(_WIN32)
    _putenv_s("HOXI_SCENARIO", path.c_str());
#else
    setenv("HOXI_SCENARIO", path.c_str(), 1);
#endif
}

void appendWord(std::vector<uint8_t>& bytes, uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<uint8_t>(word >> shift));
    }
}

// Tests may run side by side, also the same one of several builds.
std::string ownPath() {
    const std::string name = "simulator_test_" + std::to_string(std::random_device{}()) + ".toml";
    return (std::filesystem::temp_directory_path() / name).string();
}

}  // namespace

std::string SeenReport::brief() const {
    return std::to_string(code) + ":" + std::to_string(state) + ":" + std::to_string(tag);
}

uint32_t SeenReport::word(size_t offset) const {
    uint32_t value = 0;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

std::string SeenReport::text(size_t offset, size_t width) const {
    const std::string field(reinterpret_cast<const char*>(bytes.data()) + offset, width);
    return field.substr(0, field.find('\0'));
}

std::string SeenReport::words(size_t count) const {
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += (i == 0 ? "" : " ") + std::to_string(word(20 + 4 * i));
    }
    return text;
}

std::vector<uint8_t> wordsOf(std::initializer_list<uint32_t> values) {
    std::vector<uint8_t> bytes;
    for (const uint32_t value : values) {
        appendWord(bytes, value);
    }
    return bytes;
}

std::vector<uint8_t> makePacket(uint32_t code, uint32_t tag, std::vector<uint8_t> payload) {
    std::vector<uint8_t> packet;
    appendWord(packet, code);
    appendWord(packet, tag);
    appendWord(packet, static_cast<uint32_t>(payload.size()));
    packet.insert(packet.end(), payload.begin(), payload.end());
    return packet;
}

SimulatorTest::SimulatorTest() : textPath_(ownPath()) {
    support::setClockSpeed(1000);
    resetBus();
    setScenario("");
}

SimulatorTest::~SimulatorTest() {
    resetBus();
    setScenario("");
    std::filesystem::remove(textPath_);
}

void SimulatorTest::chooseFile(const std::string& name) {
    setScenario(std::string(TAMTEST_SOURCE_DIR) + "/scenarios/" + name + ".toml");
}

void SimulatorTest::chooseText(const std::string& toml) {
    std::ofstream(textPath_, std::ios::binary) << toml;
    setScenario(textPath_);
}

uint32_t SimulatorTest::open() {
    uint32_t count = 0;
    EXPECT_EQ(HoxiInitialize(1000, &count), 0u);
    return count;
}

uint32_t SimulatorTest::openFile(const std::string& name) {
    chooseFile(name);
    return open();
}

uint32_t SimulatorTest::openText(const std::string& toml) {
    chooseText(toml);
    return open();
}

HoxiResult SimulatorTest::put(uint32_t scanner, uint32_t code, uint32_t tag, const std::vector<uint8_t>& payload) {
    const std::vector<uint8_t> packet = makePacket(code, tag, payload);
    uint32_t word = 0;
    return HoxiPutCommand(scanner, packet.data(), static_cast<uint32_t>(packet.size()), &word);
}

void SimulatorTest::send(uint32_t code, uint32_t tag, std::initializer_list<uint32_t> words) {
    EXPECT_EQ(put(0, code, tag, wordsOf(words)), 0u);
}

HoxiResult SimulatorTest::fetch(uint32_t scanner, SeenReport& report) {
    uint32_t length = 0;
    const HoxiResult result = HoxiGetStatus(scanner, report.bytes.data(), 188, &length);
    report.code = report.word(0);
    report.state = static_cast<int32_t>(report.word(8));
    report.tag = report.word(12);
    report.size = report.word(16);
    return result;
}

SeenReport SimulatorTest::next(uint32_t scanner) {
    SeenReport report;
    EXPECT_EQ(fetch(scanner, report), 0u);
    return report;
}

std::string SimulatorTest::nextBriefs(size_t count, uint32_t scanner) {
    std::string briefs;
    for (size_t i = 0; i < count; ++i) {
        briefs += (i == 0 ? "" : " ") + next(scanner).brief();
    }
    return briefs;
}

std::vector<SeenReport> SimulatorTest::untilComplete(uint32_t tag, uint32_t scanner) {
    std::vector<SeenReport> reports;
    const auto isLast = [&](const SeenReport& each) { return each.code == 133 && each.tag == tag && each.state > 2; };
    while (reports.empty() || (!isLast(reports.back()) && reports.back().code != 0)) {
        reports.push_back(next(scanner));
    }
    return reports;
}

std::vector<uint8_t> SimulatorTest::fetchImage(uint32_t tag, uint32_t handle, uint32_t scanType, uint32_t imageType,
                                               uint32_t byteCount) {
    send(10, tag, {handle, scanType, imageType, byteCount});
    if (untilComplete(tag).back().state != 3) {
        return {};
    }
    std::vector<uint8_t> pixels(byteCount);
    size_t position = 0;
    uint32_t moved = 1;
    uint32_t flags = 0;
    while (position < byteCount && moved > 0) {
        EXPECT_EQ(
            HoxiGetImage(0, pixels.data() + position, byteCount - static_cast<uint32_t>(position), &moved, &flags), 0u);
        position += moved;
    }
    EXPECT_EQ(position, byteCount);
    EXPECT_EQ(nextBriefs(3),
              "26:3:" + std::to_string(tag) + " 26:3:" + std::to_string(tag) + " 133:3:" + std::to_string(tag));
    return pixels;
}

HoxiResult SimulatorTest::failedFetch(uint32_t scanner) {
    SeenReport report;
    const HoxiResult result = fetch(scanner, report);
    EXPECT_NE(result, 0u) << report.brief();
    return result;
}

}  // namespace simulator
