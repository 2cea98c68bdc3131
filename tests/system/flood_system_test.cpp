// Many scanners that report as fast as they are asked, while the main thread keeps checking.

#include <cstdio>
#include <map>
#include <sstream>
#include <string>

#include "link/link_state.h"
#include "link/status_check.h"
#include "system/system_test.h"

namespace systemtest {
namespace {

class Flood : public SystemTest {};

constexpr uint32_t kScanners = 8;
// Where a pass through a lock is a round trip to a server, as under Wine, fewer must do.
#if defined(_WIN32)
constexpr uint32_t kReports = 1000;
#else
constexpr uint32_t kReports = 20000;
#endif

TEST_F(Flood, NoReportIsLostAndTheOrderIsKeptPerScanner) {
    // Every hand-over takes a poll interval of 10 ms; here that is a few microseconds.
    start("[library]\nscanners = 8\n[[report]]\ncode = 132\ncount = " + std::to_string(kReports) +
              "\ntag = 1\ntag_step = 1\n",
          2000);
    ::testing::internal::CaptureStdout();
    const auto lastTag = [](uint32_t scanner) {
        const auto report = scannerlink::heldReport(scanner, 132);
        return report ? report->tag : 0;
    };
    constexpr uint64_t kPasses = 4 * kReports;  // one pass shows up to one report of each scanner
    uint64_t pass = 0;
    for (uint32_t scanner = 0; scanner < kScanners && pass < kPasses * kScanners; ++pass) {
        scannerlink::checkStatus();
        if (lastTag(scanner) == kReports)
            ++scanner;
    }
    for (int last = 0; last < 3; ++last)
        scannerlink::checkStatus();
    std::istringstream text(::testing::internal::GetCapturedStdout());

    std::map<uint32_t, uint32_t> next;
    for (std::string line; std::getline(text, line);) {
        unsigned scanner = 0;
        unsigned tag = 0;
        if (std::sscanf(line.c_str(), "  scanner: %u  code: 132  state: %*d  tag: %u", &scanner, &tag) == 2) {
            ASSERT_EQ(tag, ++next[scanner]) << "of scanner " << scanner;
        }
    }
    ASSERT_EQ(next.size(), kScanners);
    for (const auto& [scanner, count] : next)
        EXPECT_EQ(count, kReports) << "of scanner " << scanner;
}

}  // namespace
}  // namespace systemtest
