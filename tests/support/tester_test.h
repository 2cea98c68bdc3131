// What the tests of the tester's own code start from: every state put back, one scanner on a fake library, and short
// ways to type a line, deliver a report and read what was printed.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "link/report.h"

namespace support {

class TesterTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Prepares the link as after start-up with this many scanners; their threads are there but do not run.
    void startLink(uint32_t scanners = 1);

    // Runs one line as if typed and returns all that was printed to the console.
    static std::string type(const std::string& line);
    // Returns what the function printed.
    template <typename Function>
    static std::string printed(Function function) {
        ::testing::internal::CaptureStdout();
        function();
        return ::testing::internal::GetCapturedStdout();
    }

    // Hands a report over as the status thread does, at once or when the clock reaches the time.
    static void deliver(const scannerlink::Report& report, uint32_t scanner = 0);
    static void deliverAt(uint64_t ms, const scannerlink::Report& report, uint32_t scanner = 0);
};

// A report with these header fields and, from its body's start, these words.
scannerlink::Report makeReport(uint32_t code, int32_t state, uint32_t tag, const std::vector<uint32_t>& words = {});

// Puts bytes into a report at an offset from its start.
void setBytes(scannerlink::Report& report, size_t offset, const std::string& bytes);

// The bytes of 32-bit little-endian words.
std::vector<uint8_t> wordBytes(const std::vector<uint32_t>& words);

}  // namespace support
