// A program's view of the simulated library, for tests: scenarios by name or by text, packets out, reports in.
//
// The clock runs a thousand times faster than the world's, so that a boot lasts a few milliseconds.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "hoxi/hoxi.h"

namespace simulator {

struct SeenReport {
    uint32_t code = 0;
    int32_t state = 0;
    uint32_t tag = 0;
    uint32_t size = 0;
    std::array<uint8_t, 188> bytes{};

    // The report in short, for comparing: code, state and tag.
    std::string brief() const;
    uint32_t word(size_t offset) const;
    // The first words of the body, in decimal with blanks in between.
    std::string words(size_t count) const;
    std::string text(size_t offset, size_t width) const;
};

// A payload of 32-bit words.
std::vector<uint8_t> wordsOf(std::initializer_list<uint32_t> values);
std::vector<uint8_t> makePacket(uint32_t code, uint32_t tag, std::vector<uint8_t> payload = {});

// Starts each test with a library that was never called, and leaves none open.
class SimulatorTest : public testing::Test {
protected:
    SimulatorTest();
    ~SimulatorTest() override;

    // Chooses a scenario: a file of the scenarios folder, or a text that is written to a file of its own.
    void chooseFile(const std::string& name);
    void chooseText(const std::string& toml);
    // Chooses, opens and expects success.
    uint32_t open();
    uint32_t openFile(const std::string& name);
    uint32_t openText(const std::string& toml);
    // The path of the file that chooseText writes.
    const std::string& textPath() const { return textPath_; }

    HoxiResult put(uint32_t scanner, uint32_t code, uint32_t tag, const std::vector<uint8_t>& payload = {});
    // Sends a command with a payload of words to the first scanner and expects it to be accepted.
    void send(uint32_t code, uint32_t tag, std::initializer_list<uint32_t> words = {});
    // One fetch. The report is that of a successful one.
    HoxiResult fetch(uint32_t scanner, SeenReport& report);
    // Fetches a report and expects it; "" when the fetch fails.
    SeenReport next(uint32_t scanner = 0);
    // The next reports in short, one after the other, with blanks in between.
    std::string nextBriefs(size_t count, uint32_t scanner = 0);
    // Fetches reports up to the completion (code 133, state 3 or more) of a command.
    std::vector<SeenReport> untilComplete(uint32_t tag, uint32_t scanner = 0);
    // Fetches an image with the send command, in as few calls as possible; empty when it is refused.
    std::vector<uint8_t> fetchImage(uint32_t tag, uint32_t handle, uint32_t scanType, uint32_t imageType,
                                    uint32_t byteCount);
    // The result of a fetch that must not succeed.
    HoxiResult failedFetch(uint32_t scanner = 0);

private:
    std::string textPath_;
};

}  // namespace simulator
