#include "support/tester_test.h"

#include <cstring>

#include "console/console_state.h"
#include "console/dispatcher.h"
#include "link/link_state.h"
#include "link/scanner_link.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/fake_tiff.h"

namespace support {

void TesterTest::SetUp() {
    resetFakePlatform();
    resetFakeHoxi();
    resetFakeTiff();
    console::resetConsoleState();
    scannerlink::state.newStatusMutex = {};
    scannerlink::resetLinkState();
}

void TesterTest::TearDown() {
    console::resetConsoleState();
}

void TesterTest::startLink(uint32_t scanners) {
    fakeHoxi().scannerCount = scanners;
    printed([] { scannerlink::initializeLink(); });
    fakeHoxi().calls.clear();
}

std::string TesterTest::type(const std::string& line) {
    std::string text = line;
    return printed([&] { console::dispatchLine(text.data()); });
}

void TesterTest::deliver(const scannerlink::Report& report, uint32_t scanner) {
    scannerlink::Mailbox& mailbox = scannerlink::state.mailboxes[scanner];
    mailbox.newest = report;
    if (report.code < scannerlink::kReportCodes)
        mailbox.slots[report.code] = report;
}

void TesterTest::deliverAt(uint64_t ms, const scannerlink::Report& report, uint32_t scanner) {
    fakePlatform().at.emplace(ms, [=] { deliver(report, scanner); });
}

scannerlink::Report makeReport(uint32_t code, int32_t state, uint32_t tag, const std::vector<uint32_t>& words) {
    scannerlink::Report report{};
    report.code = code;
    report.state = state;
    report.tag = tag;
    report.size = static_cast<uint32_t>(words.size() * sizeof(uint32_t));
    if (!words.empty())
        std::memcpy(report.body, words.data(), words.size() * sizeof(uint32_t));
    return report;
}

void setBytes(scannerlink::Report& report, size_t offset, const std::string& bytes) {
    std::memcpy(reinterpret_cast<char*>(&report) + offset, bytes.data(), bytes.size());
}

std::vector<uint8_t> wordBytes(const std::vector<uint32_t>& words) {
    std::vector<uint8_t> bytes(words.size() * sizeof(uint32_t));
    if (!words.empty())
        std::memcpy(bytes.data(), words.data(), bytes.size());
    return bytes;
}

}  // namespace support
