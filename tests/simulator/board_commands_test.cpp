#include <string>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "simulator_test.h"

namespace simulator {
namespace {

using Bytes = std::vector<uint8_t>;

class BoardCommandsTest : public SimulatorTest {
protected:
    void sendBytes(uint32_t code, uint32_t tag, const Bytes& payload) { EXPECT_EQ(put(0, code, tag, payload), 0u); }
    // The register's value by way of the report, whose answer must have no pending report.
    int32_t readRegister(uint8_t device, uint8_t number) {
        sendBytes(103, 9, {device, 0, number, 0, 0, 0});
        const SeenReport value = next();
        EXPECT_EQ(value.code, 103u);
        EXPECT_EQ(value.tag, 9u);
        EXPECT_EQ(value.size, 0u);
        EXPECT_EQ(next().brief(), "133:3:9");
        return value.state;
    }
    std::string readEeprom(uint16_t address) {
        sendBytes(105, 9, {static_cast<uint8_t>(address), static_cast<uint8_t>(address >> 8), 0, 0});
        std::string briefs = nextBriefs(2);
        return briefs == "133:1:9 133:6:9" ? briefs : briefs + " " + next().brief();
    }
    // A reset that takes no time.
    void resetNow() {
        send(1, 1);
        EXPECT_EQ(nextBriefs(2), "133:1:1 2:3:0");
    }
};

TEST_F(BoardCommandsTest, MaskIsSetAndReportedBack) {
    open();
    send(55, 1);
    EXPECT_EQ(next().brief(), "133:1:1");
    const SeenReport before = next();
    EXPECT_EQ(before.brief(), "8:3:1");
    EXPECT_EQ(before.words(1), "0");
    EXPECT_EQ(next().brief(), "133:3:1");
    send(54, 2, {0xFEDCBA98});
    next();
    EXPECT_EQ(next().word(20), 0xFEDCBA98u);
    next();
    send(55, 3);
    next();
    const SeenReport after = next();
    EXPECT_EQ(after.word(20), 0xFEDCBA98u);
    EXPECT_EQ(after.size, 4u);
}

TEST_F(BoardCommandsTest, SerialPortsCannotBeConfigured) {
    open();
    send(100, 1);
    EXPECT_EQ(nextBriefs(3), "133:1:1 83:9:1 133:9:1");
}

TEST_F(BoardCommandsTest, SerialBytesComeBack) {
    open();
    Bytes payload(40);
    payload[0] = 1;
    payload[4] = 3;
    payload[8] = 1;
    payload[9] = 0x2A;
    payload[10] = 0xFF;
    payload[11] = 7;
    sendBytes(101, 1, payload);
    EXPECT_EQ(next().brief(), "133:1:1");
    const SeenReport data = next();
    EXPECT_EQ(data.brief(), "141:3:1");
    EXPECT_EQ(data.size, 11u);
    EXPECT_EQ(data.words(3), "1 3 " + std::to_string(0x00FF2A01));
    EXPECT_EQ(next().brief(), "133:3:1");
}

TEST_F(BoardCommandsTest, SerialHasTwoPortsAndThirtyTwoBytes) {
    open();
    const auto state = [&](uint8_t port, uint8_t count, size_t size = 40) {
        Bytes payload(size);
        payload[0] = port;
        payload[4] = count;
        sendBytes(101, 1, payload);
        return untilComplete(1).back().state;
    };
    EXPECT_EQ(state(0, 0), 3);
    EXPECT_EQ(state(1, 32), 3);
    EXPECT_EQ(state(2, 1), 6);
    EXPECT_EQ(state(0, 33), 6);
    EXPECT_EQ(state(0, 1, 39), 6);
}

TEST_F(BoardCommandsTest, RegistersAreWrittenWithoutAPendingReport) {
    open();
    sendBytes(102, 1, {2, 0, 43, 0, 25, 0});
    EXPECT_EQ(next().brief(), "133:3:1");
    sendBytes(102, 2, {4, 0, 2, 0, 0xCD, 0xAB});
    EXPECT_EQ(next().brief(), "133:3:2");
    EXPECT_EQ(readRegister(2, 43), 25);
    EXPECT_EQ(readRegister(4, 2), 0xABCD);
    EXPECT_EQ(readRegister(1, 43), 8);
    EXPECT_EQ(readRegister(4, 3), 0);
}

TEST_F(BoardCommandsTest, GainsStartAtOneAndAllOtherRegistersAtZero) {
    open();
    for (const uint8_t camera : {uint8_t{1}, uint8_t{2}}) {
        EXPECT_EQ(readRegister(camera, 42), 0);
        EXPECT_EQ(readRegister(camera, 43), 8);
        EXPECT_EQ(readRegister(camera, 46), 8);
        EXPECT_EQ(readRegister(camera, 47), 0);
    }
    EXPECT_EQ(readRegister(3, 43), 0);
}

TEST_F(BoardCommandsTest, ShortRegisterCommandsFailWithoutAPendingReport) {
    open();
    sendBytes(102, 1, {2, 0, 43, 0, 25});
    sendBytes(103, 2, {2, 0, 43});
    EXPECT_EQ(nextBriefs(2), "133:6:1 133:6:2");
}

TEST_F(BoardCommandsTest, EepromKeepsItsBytesOverAReset) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 20\n");
    sendBytes(104, 2, {0xFF, 0x1F, 0x5A, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:3:2");
    resetNow();
    EXPECT_EQ(readEeprom(8191), "133:1:9 105:90:9 133:3:9");
    EXPECT_EQ(readEeprom(0), "133:1:9 105:255:9 133:3:9");
}

TEST_F(BoardCommandsTest, EepromEndsAt8191) {
    open();
    sendBytes(104, 1, {0x00, 0x20, 1, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:6:1");
    EXPECT_EQ(readEeprom(8192), "133:1:9 133:6:9");
    sendBytes(104, 2, {0x00, 0x20});
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:6:2");
}

TEST_F(BoardCommandsTest, LedsAreReportedInTheirOrder) {
    open();
    send(106, 1, {0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 1});
    EXPECT_EQ(next().brief(), "133:1:1");
    const SeenReport leds = next();
    EXPECT_EQ(leds.brief(), "106:3:1");
    EXPECT_EQ(leds.size, 52u);
    EXPECT_EQ(leds.words(13), "0 1 2 3 0 1 2 3 0 1 2 3 1");
    EXPECT_EQ(next().brief(), "133:3:1");
    send(107, 2);
    next();
    EXPECT_EQ(next().words(13), "0 1 2 3 0 1 2 3 0 1 2 3 1");
}

TEST_F(BoardCommandsTest, LedsHaveFourStates) {
    open();
    send(106, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:6:1");
    send(106, 2, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:6:2");
}

TEST_F(BoardCommandsTest, ResetLosesAllButTheEeprom) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 20\n");
    send(54, 2, {5});
    send(106, 3, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
    sendBytes(102, 4, {2, 0, 43, 0, 25, 0});
    send(201, 5, {1, 1, 0x10002, 3, 0, 0});
    untilComplete(5);
    resetNow();
    EXPECT_EQ(readRegister(2, 43), 8);
    send(55, 6);
    next();
    EXPECT_EQ(next().words(1), "0");
    next();
    send(107, 7);
    next();
    EXPECT_EQ(next().words(2), "0 0");
    next();
    send(201, 8, {1, 0, 0x10002, 0, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:8 201:0:8");
}

TEST_F(BoardCommandsTest, LogicRegistersRememberWhatWasWritten) {
    open();
    send(201, 1, {1, 1, 0x10020, 0x1234, 0, 0});  // with a count in front: the value follows
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    send(201, 2, {2, 1, 0x20, 1, 0x77, 0});  // the count follows, then the value
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:3:2");
    send(201, 3, {1, 0, 0x10020, 0, 0, 0});
    EXPECT_EQ(next().brief(), "133:1:3");
    const SeenReport value = next();
    EXPECT_EQ(value.brief(), "201:" + std::to_string(0x1234) + ":3");
    EXPECT_EQ(value.words(3), "1 65568 " + std::to_string(0x1234));
    EXPECT_EQ(next().brief(), "133:3:3");
    send(201, 4, {2, 0, 0x20, 1, 0, 0});
    EXPECT_EQ(nextBriefs(3), "133:1:4 201:119:4 133:3:4");
    send(201, 6, {1, 1, 0x10021, 0x7EADBEEF, 0, 0});
    nextBriefs(2);
    send(201, 7, {1, 0, 0x10021, 0, 0, 0});
    EXPECT_EQ(nextBriefs(3), "133:1:7 201:" + std::to_string(0x7EADBEEF) + ":7 133:3:7");
    send(201, 5, {1, 2, 0x20, 1, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:5 133:6:5");
}

TEST_F(BoardCommandsTest, MemoryBanksAreFilledAndRead) {
    open();
    send(201, 1, {0, 3, 100, 50, 7, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    const auto word = [&](uint32_t choice, uint32_t address) {
        send(201, 2, {0, choice, address, 1, 0, 0});
        EXPECT_EQ(next().brief(), "133:1:2");
        const SeenReport report = next();
        EXPECT_EQ(next().brief(), "133:3:2");
        return report.state;
    };
    EXPECT_EQ(word(2, 99), 0);
    EXPECT_EQ(word(2, 100), 7);
    EXPECT_EQ(word(2, 149), 7);
    EXPECT_EQ(word(2, 150), 0);
    EXPECT_EQ(word(0, 100), 0);
    send(201, 3, {0, 8, 0, 1, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:3 133:6:3");
}

TEST_F(BoardCommandsTest, OtherTestsAreComplete) {
    open();
    send(200, 1, {2, 4});
    EXPECT_EQ(nextBriefs(2), "133:1:1 133:3:1");
    send(201, 4, {5, 0, 0, 0, 0, 0});
    send(201, 5, {1, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(4), "133:1:4 133:6:4 133:1:5 133:6:5");
}

TEST_F(BoardCommandsTest, ErrorLogTellsWhatCouldNotBeDoneUntilItIsDeleted) {
    openText("[[scanner]]\noff_bus_ms = 0\nboot_ms = 0\n");
    send(201, 1, {3, 0, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(3), "133:1:1 201:0:1 133:3:1");
    send(104, 2, {8192});
    send(12, 3, {1, 1, 1});
    nextBriefs(4);
    send(1, 4);
    nextBriefs(2);
    send(201, 5, {3, 0, 0, 0, 0, 0});
    next();
    const SeenReport log = next();
    EXPECT_EQ(log.brief(), "201:2:5");
    EXPECT_EQ(log.words(5), "3 104 6 12 5");
    next();
    send(201, 6, {3, 1, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:6 133:3:6");
    send(201, 7, {3, 0, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(3), "133:1:7 201:0:7 133:3:7");
    send(201, 8, {3, 2, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:8 133:6:8");
}

TEST_F(BoardCommandsTest, ErrorLogHoldsTheLatest64AndTellsTheLatest19) {
    open();
    for (uint32_t i = 0; i < 65; ++i) {
        send(12, 1, {i, 1, 1});
        nextBriefs(2);
    }
    send(104, 2, {8192});
    nextBriefs(2);
    send(201, 3, {3, 0, 0, 0, 0, 0});
    next();
    const SeenReport log = next();
    EXPECT_EQ(log.brief(), "201:64:3");
    EXPECT_EQ(log.size, 4u + 19 * 8);
    EXPECT_EQ(log.word(20 + 4 + 18 * 8), 104u);
}

TEST_F(BoardCommandsTest, VeskCameraIsReadAndCheckedWithSuccess) {
    open();
    for (const uint32_t option : {0U, 3U}) {
        send(201, 1, {4, option, 0, 0, 0, 0});
        EXPECT_EQ(nextBriefs(3), "133:1:1 201:8:1 133:3:1") << option;
    }
    for (const uint32_t option : {4U, 7U}) {
        send(201, 1, {4, option, 0, 0, 0, 0});
        EXPECT_EQ(nextBriefs(3), "133:1:1 201:0:1 133:3:1") << option;
    }
    send(201, 2, {4, 8, 0, 0, 0, 0});
    EXPECT_EQ(nextBriefs(2), "133:1:2 133:6:2");
}

}  // namespace
}  // namespace simulator
