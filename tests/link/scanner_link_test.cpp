#include "link/scanner_link.h"

#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace scannerlink {
namespace {

using support::callNames;
using support::fakeHoxi;
using support::fakePlatform;

class ScannerLink : public support::TesterTest {
protected:
    static std::string initialize(uint32_t* result = nullptr) {
        return printed([&] {
            const uint32_t got = initializeLink();
            if (result != nullptr)
                *result = got;
        });
    }
};

TEST_F(ScannerLink, StartTellsTheScannersAndAsksForTheirBufferSizes) {
    fakeHoxi().scannerCount = 2;
    fakeHoxi().dataBufSize = 4096;
    uint32_t result = 1;
    EXPECT_EQ(initialize(&result), "TamTest: HoxiInitialize found 2 scanners\n");
    EXPECT_EQ(result, 0u);
    EXPECT_EQ(callNames(), (std::vector<std::string>{"Initialize", "GetBufSize", "GetBufSize"}));
    EXPECT_EQ(fakeHoxi().calls[0].numbers, std::vector<uint64_t>{1000});
    EXPECT_EQ(state.scannerCount, 2u);
    EXPECT_EQ(state.bufferSizes[1].first, 1u);
    EXPECT_EQ(state.bufferSizes[1].second, 2u);
    EXPECT_EQ(state.bufferSizes[1].data, 4096u);
    EXPECT_EQ(fakePlatform().threads.size(), 2u);
}

TEST_F(ScannerLink, NoScannerIsNoError) {
    fakeHoxi().scannerCount = 0;
    uint32_t result = 1;
    EXPECT_EQ(initialize(&result), "TamTest: HoxiInitialize found 0 scanners\n");
    EXPECT_EQ(result, 0u);
    EXPECT_TRUE(fakePlatform().threads.empty());
}

TEST_F(ScannerLink, EightScannersAreAllServed) {
    fakeHoxi().scannerCount = 8;
    EXPECT_EQ(initialize(), "TamTest: HoxiInitialize found 8 scanners\n");
    EXPECT_EQ(fakePlatform().threads.size(), 8u);
}

TEST_F(ScannerLink, OfNineScannersTheFirstEightAreServed) {
    fakeHoxi().scannerCount = 9;
    EXPECT_EQ(initialize(),
              "TamTest: HoxiInitialize found 9 scanners\n"
              "TamTest: only the first 8 scanners are used\n");
    EXPECT_EQ(state.scannerCount, 8u);
    EXPECT_EQ(fakePlatform().threads.size(), 8u);
}

TEST_F(ScannerLink, FailedInitializationGivesItsResultAndServesNobody) {
    fakeHoxi().results["Initialize"] = 9010;
    uint32_t result = 0;
    EXPECT_EQ(initialize(&result), "TamTest: Failed HoxiInitialize ()\n");
    EXPECT_EQ(result, 9010u);
    EXPECT_EQ(callNames(), std::vector<std::string>{"Initialize"});
    EXPECT_EQ(state.scannerCount, 0u);
}

TEST_F(ScannerLink, FailedBufferSizeStopsTheLoopAndStillStartsTheThreads) {
    fakeHoxi().scannerCount = 3;
    fakeHoxi().results["GetBufSize1"] = 9011;
    uint32_t result = 0;
    EXPECT_EQ(initialize(&result),
              "TamTest: HoxiInitialize found 3 scanners\n"
              "TamTest: Failed HoxiGetBufSize () for scanner 1\n");
    EXPECT_EQ(result, 9011u);
    EXPECT_EQ(callNames(), (std::vector<std::string>{"Initialize", "GetBufSize", "GetBufSize"}));
    EXPECT_EQ(fakePlatform().threads.size(), 3u);
}

TEST_F(ScannerLink, StartsTheVideoThreadsWhateverTheResult) {
    static int started;
    started = 0;
    state.startVideoThreads = [] { ++started; };
    initialize();
    fakeHoxi().results["Initialize"] = 1;
    initialize();
    EXPECT_EQ(started, 2);
}

TEST_F(ScannerLink, ScannerAloneReportsTheCurrentIndex) {
    startLink(2);
    state.currentScanner = 1;
    EXPECT_EQ(type("SCaNneR"), "scanner index: 1\n");
}

TEST_F(ScannerLink, TheLastScannerCanBeSelectedAndTheOneBehindItNot) {
    startLink(2);
    EXPECT_EQ(type("scnr 1"), "scanner index: 1\n");
    EXPECT_EQ(type("scnr 2"), "Invalid scanner index\nscanner index: 1\n");
    EXPECT_EQ(type("scnr -1"), "Invalid scanner index\nscanner index: 1\n");
    EXPECT_EQ(type("scnr 0x0"), "scanner index: 0\n");
}

TEST_F(ScannerLink, ScannerOneOfOneIsInvalidAndZeroStays) {
    startLink(1);
    EXPECT_EQ(type("scnr 1"), "Invalid scanner index\nscanner index: 0\n");
}

}  // namespace
}  // namespace scannerlink
