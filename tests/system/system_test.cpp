#include "system/system_test.h"

#include <cstdlib>

#include "console/console_state.h"
#include "console/dispatcher.h"
#include "hoxi/hoxi.h"
#include "link/link_state.h"
#include "link/scanner_link.h"
#include "platform/clock.h"
#include "simulator/bus.h"
#include "support/test_clock.h"
#include "video/video_threads.h"

namespace systemtest {
namespace {

void chooseScenario(const std::string& path) {
#if defined(_WIN32)
    _putenv_s("HOXI_SCENARIO", path.c_str());
#else
    setenv("HOXI_SCENARIO", path.c_str(), 1);
#endif
}

// Takes what the status threads have handed over, so that they go on, and tells whether there are any.
bool anyThreadRunning() {
    platform::lockMutex(scannerlink::state.newStatusMutex);
    bool running = false;
    for (scannerlink::Mailbox& mailbox : scannerlink::state.mailboxes) {
        mailbox.newest.reset();
        mailbox.fetchResult = 0;
        running = running || mailbox.threadRunning != 0;
    }
    platform::unlockMutex(scannerlink::state.newStatusMutex);
    return running;
}

}  // namespace

void SystemTest::SetUp() {
    console::resetConsoleState();
    scannerlink::resetLinkState();
    simulator::resetBus();
    scannerlink::state.startVideoThreads = video::startVideoThreads;
}

void SystemTest::TearDown() {
    HoxiTerminate();
    constexpr int kMostPasses = 10000;
    for (int pass = 0; anyThreadRunning(); ++pass) {
        if (pass == kMostPasses)
            FAIL() << "a status thread does not end";
        platform::sleepMs(10);
    }
}

std::string SystemTest::start(const std::string& scenario, double clockSpeed) {
    support::setClockSpeed(clockSpeed);
    support::writeFile(folder_.file("scenario.toml"), scenario);
    chooseScenario(folder_.file("scenario.toml"));
    ::testing::internal::CaptureStdout();
    scannerlink::initializeLink();
    return ::testing::internal::GetCapturedStdout();
}

std::string SystemTest::type(const std::string& line) {
    std::string text = line;
    ::testing::internal::CaptureStdout();
    console::dispatchLine(text.data());
    return ::testing::internal::GetCapturedStdout();
}

}  // namespace systemtest
