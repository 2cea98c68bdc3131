#include "operations/eeprom_write_test.h"

#include <cstring>

#include "console/console_state.h"
#include "link/link_state.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace operations {
namespace {

using support::fakeHoxi;
using support::fakePlatform;
using support::makeReport;
using support::packetsPut;

const std::string kWaiting =
    "TamTest: waiting for scanner status event\n         enter blank or CR to abandon wait or ESC to exit scripts\n";

class EepromWriteTest : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        startLink();
        scannerlink::state.quiet = 1;
        fakeHoxi().onPutCommand = [this](uint32_t, const std::vector<uint8_t>& packet) {
            uint32_t tag = 0;
            std::memcpy(&tag, packet.data() + 4, sizeof tag);
            if (tag != silentTag)
                deliver(makeReport(133, tag == failedTag ? 6 : 3, tag));
            return tag == refusedTag ? 9020u : 0u;
        };
    }

    // The packet that writes a value to an address.
    static std::vector<uint8_t> write(uint8_t tag, uint16_t address, uint8_t value) {
        return {104,
                0,
                0,
                0,
                tag,
                0,
                0,
                0,
                4,
                0,
                0,
                0,
                static_cast<uint8_t>(address & 0xFF),
                static_cast<uint8_t>(address >> 8),
                value,
                0};
    }

    uint32_t silentTag = 0;
    uint32_t refusedTag = 0;
    uint32_t failedTag = 0;
};

TEST_F(EepromWriteTest, WritesUpToTheEndAddressWithAWrappingPattern) {
    EXPECT_EQ(type("eewt 0 3 0x1FF"), kWaiting + kWaiting + kWaiting);
    EXPECT_EQ(packetsPut(), (std::vector<std::vector<uint8_t>>{write(1, 0, 0xFF), write(2, 1, 0), write(3, 2, 1)}));
}

TEST_F(EepromWriteTest, WithStartNotBelowEndSendsNothing) {
    EXPECT_EQ(type("eewt 10 10 1"), "");
    EXPECT_EQ(type("eewt 11 10 1"), "");
    EXPECT_TRUE(fakeHoxi().calls.empty());
}

TEST_F(EepromWriteTest, AddressesEndAt8191) {
    EXPECT_EQ(type("eewt 8192 1 1"), "Start address too large, last address == 8191\n");
    EXPECT_EQ(type("eewt 1 8192 1"), "End address too large, last address == 8191\n");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(type("eewt 8190 8191 1"), kWaiting);
    EXPECT_EQ(packetsPut().at(0), write(1, 8190, 1));
}

TEST_F(EepromWriteTest, AddressesAreCutToSixteenBits) {
    EXPECT_EQ(type("eewt 0x10005 0x10006 7"), kWaiting);
    EXPECT_EQ(packetsPut().at(0), write(1, 5, 7));
}

TEST_F(EepromWriteTest, NeedsThreeArguments) {
    for (const char* line : {"eewt", "eewt 1", "eewt 1 2"})
        EXPECT_EQ(type(line).substr(0, 67), "TamTest: Missing parameter - syntax for EEprom_Write_Test(eewt) is:");
    EXPECT_TRUE(fakeHoxi().calls.empty());
    EXPECT_EQ(scannerlink::state.nextTag, 1u);
}

TEST_F(EepromWriteTest, EscFailsTheWaitAndTheMessageTellsAddressBeforePattern) {
    silentTag = 1;
    fakePlatform().at.emplace(300, [] { fakePlatform().keys = "\x1B"; });
    EXPECT_EQ(type("eewt 5 9 0x12"), kWaiting + "Failed Write of pattern 0x5 to address  0x12\n");
    EXPECT_EQ(packetsPut().size(), 1u);
}

TEST_F(EepromWriteTest, EscLeavesAllScripts) {
    const support::TemporaryFolder folder;
    support::writeFile(folder.file("script"), "; nothing\n");
    type("s " + folder.file("script"));
    ASSERT_EQ(console::state.depth, 1);
    silentTag = 1;
    fakePlatform().at.emplace(300, [] { fakePlatform().keys = "\x1B"; });
    type("eewt 5 9 0x12");
    EXPECT_EQ(console::state.depth, 0);
}

TEST_F(EepromWriteTest, AnyOtherKeyAbandonsTheWaitAndTheTestGoesOn) {
    silentTag = 1;
    fakePlatform().at.emplace(300, [] { fakePlatform().keys = " "; });
    EXPECT_EQ(type("eewt 5 7 0x12"), kWaiting + kWaiting);
    EXPECT_EQ(packetsPut().size(), 2u);
}

TEST_F(EepromWriteTest, WithPollingOffTheWaitLastsUntilTheEvent) {
    silentTag = 1;
    console::state.keyboardEnabled = 0;
    fakePlatform().keys = "\x1B";
    deliverAt(5000, makeReport(133, 3, 1));
    EXPECT_EQ(type("eewt 5 6 0x12"), kWaiting);
    EXPECT_EQ(fakePlatform().nowMs, 5000u);
}

TEST_F(EepromWriteTest, RefusedWriteEndsTheTest) {
    refusedTag = 2;
    EXPECT_EQ(type("eewt 5 9 0x12"),
              kWaiting + "TamTest: Failure in HoxiPutCommand - 9020\nFailed Write of pattern 0x6 to address  0x13\n");
    EXPECT_EQ(packetsPut().size(), 2u);
}

TEST_F(EepromWriteTest, WriteThatEndsInAFailureEndsTheTest) {
    failedTag = 1;
    EXPECT_EQ(type("eewt 5 9 0x12"), kWaiting + "Failed Write of pattern 0x5 to address  0x12\n");
    EXPECT_EQ(packetsPut().size(), 1u);
}

TEST_F(EepromWriteTest, WriteThatIsUnderWayIsWaitedFor) {
    silentTag = 1;
    deliverAt(100, makeReport(133, 1, 1));
    deliverAt(400, makeReport(133, 2, 1));
    deliverAt(700, makeReport(133, 3, 1));
    EXPECT_EQ(type("eewt 5 6 0x12"), kWaiting);
    EXPECT_EQ(fakePlatform().nowMs, 700u);
}

TEST_F(EepromWriteTest, LostScannerEndsTheTest) {
    silentTag = 2;
    fakePlatform().at.emplace(300, [] { scannerlink::state.mailboxes[0].threadRunning = 0; });
    EXPECT_EQ(type("eewt 5 9 0x12"), kWaiting + kWaiting + "Failed Write of pattern 0x6 to address  0x13\n");
}

TEST_F(EepromWriteTest, MessagesStayOutOfTheLog) {
    const support::TemporaryFolder folder;
    type("blog " + folder.file("log"));
    type("eewt 8192 1 1");
    type("eewt 1 8192 1");
    type("eewt 1 2 1");
    failedTag = 2;
    EXPECT_NE(type("eewt 1 2 1").find("Failed Write"), std::string::npos);
    EXPECT_EQ(support::readFile(folder.file("log")), "");
    type("elog");
}

}  // namespace
}  // namespace operations
