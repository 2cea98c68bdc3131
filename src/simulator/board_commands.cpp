// Service commands: lights, masks, serial ports, EEPROM, registers and board tests.
#include <algorithm>

#include "hoxi/hoxi_codes.h"
#include "simulator/command_rows.h"

namespace simulator {

namespace {

// A report by which a register or a byte is read: its state is the value.
ReportWriter valueReport(const Request& request, uint32_t code, int32_t value) {
    return {code, value, request.packet.tag};
}

Answer answerMask(const Request& request) {
    ReportWriter report(hoxi::STA_DFC_MASK, hoxi::kComplete, request.packet.tag);
    return answerWithData(request.packet, report.u32(request.device.board.dfcMask));
}

Answer runSetMask(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint32_t mask = payload.u32();
    if (payload.isMissing()) {
        return answer(request.packet, kBadParameter);
    }
    request.device.board.dfcMask = mask;
    return answerMask(request);
}

Answer runConfigSerial(const Request& request) {
    const ReportWriter report(hoxi::STA_NOT_SUPPORTED, kNotSupported, request.packet.tag);
    return {{pending(request.packet), {Stage::Data, report.report()}, ended(request.packet, kNotSupported)}, {}};
}

// What is sent comes back: each port has a plug that joins its two lines.
Answer runTransmitSerial(const Request& request) {
    constexpr size_t kMostBytes = 32;
    constexpr uint32_t kPorts = 2;
    PayloadReader payload(request.packet.payload);
    const uint32_t port = payload.u32();
    const uint32_t count = payload.u32();
    const std::span<const uint8_t> bytes = payload.bytes(kMostBytes);
    if (payload.isMissing() || port >= kPorts || count > kMostBytes) {
        return answer(request.packet, kBadParameter);
    }
    ReportWriter report(hoxi::STA_SERIAL_DATA, hoxi::kComplete, request.packet.tag);
    return answerWithData(request.packet, report.u32(port).u32(count).bytes(bytes.first(count)));
}

// The registers are answered by the end of the command alone: programs take the first report with its tag for it.
Answer runWriteRegister(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint8_t device = payload.u8();
    payload.u8();
    const uint16_t number = payload.u16();
    const uint16_t value = payload.u16();
    if (payload.isMissing()) {
        return {{ended(request.packet, kBadParameter)}, {}};
    }
    request.device.board.registers.write(device, number, value);
    return {{ended(request.packet, hoxi::kComplete)}, {}};
}

Answer runReadRegister(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint8_t device = payload.u8();
    payload.u8();
    const uint16_t number = payload.u16();
    if (payload.isMissing()) {
        return {{ended(request.packet, kBadParameter)}, {}};
    }
    const uint16_t value = request.device.board.registers.read(device, number);
    const ReportWriter report = valueReport(request, hoxi::STA_READ_I2C, value);
    return {{{Stage::Data, report.report()}, ended(request.packet, hoxi::kComplete)}, {}};
}

Answer runWriteEeprom(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint16_t address = payload.u16();
    const uint8_t value = payload.u8();
    if (payload.isMissing() || address >= kEepromSize) {
        return answer(request.packet, kBadParameter);
    }
    request.device.board.eeprom[address] = value;
    return answer(request.packet, hoxi::kComplete);
}

Answer runReadEeprom(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint16_t address = payload.u16();
    if (payload.isMissing() || address >= kEepromSize) {
        return answer(request.packet, kBadParameter);
    }
    const uint8_t value = request.device.board.eeprom[address];
    return answerWithData(request.packet, valueReport(request, hoxi::CMD_READ_EEPROM, value));
}

Answer answerLeds(const Request& request) {
    ReportWriter report(hoxi::STA_STATUS_LEDS, hoxi::kComplete, request.packet.tag);
    for (const uint32_t led : request.device.board.leds) {
        report.u32(led);
    }
    return answerWithData(request.packet, report);
}

Answer runSetLeds(const Request& request) {
    constexpr uint32_t kYellow = 3;  // the last of their states
    PayloadReader payload(request.packet.payload);
    std::array<uint32_t, kLedCount> leds{};
    bool usable = true;
    for (uint32_t& led : leds) {
        led = payload.u32();
        usable = usable && led <= kYellow;
    }
    if (payload.isMissing() || !usable) {
        return answer(request.packet, kBadParameter);
    }
    request.device.board.leds = leds;
    return answerLeds(request);
}

// The targets of the read and write test.
enum Target : uint32_t { kBankMemory = 0, kLogicRegisters = 1, kCameraLogicRegisters = 2, kErrorLog = 3, kVesk = 4 };

struct ReadWriteTest {
    uint32_t target;
    uint32_t options[5];
};

Answer answerValue(const Request& request, const ReadWriteTest& test, uint32_t value) {
    ReportWriter report = valueReport(request, hoxi::CMD_READ_WRITE_TEST, static_cast<int32_t>(value));
    return answerWithData(request.packet, report.u32(test.target).u32(test.options[1]).u32(value));
}

// Bank and direction, first word, number of words, value.
Answer testBank(const Request& request, const ReadWriteTest& test) {
    constexpr uint32_t kLastBankWrite = 7;
    const auto& [choice, address, count, value, unused] = test.options;
    if (choice > kLastBankWrite) {
        return answer(request.packet, kBadParameter);
    }
    LogicMemory& logic = request.device.board.logic;
    if (choice % 2 == 0) {
        return answerValue(request, test, logic.readBank(choice / 2, address));
    }
    logic.fillBank(choice / 2, address, count, static_cast<uint16_t>(value));
    return answer(request.packet, hoxi::kComplete);
}

// Read or write, register, value. A register number without a count has the count, of one, in front of the value.
Answer testRegister(const Request& request, const ReadWriteTest& test) {
    constexpr uint32_t kCountOfOne = 0x10000;
    const auto number = static_cast<uint16_t>(test.options[1]);
    const bool hasCount = (test.options[1] & kCountOfOne) != 0;
    LogicMemory& logic = request.device.board.logic;
    if (test.options[0] > 1) {
        return answer(request.packet, kBadParameter);
    }
    if (test.options[0] == 0) {
        return answerValue(request, test, logic.readRegister(test.target, number));
    }
    logic.writeRegister(test.target, number, hasCount ? test.options[2] : test.options[3]);
    return answer(request.packet, hoxi::kComplete);
}

// Read or delete. A read tells the number of entries, and code and state of the latest ones as far as they fit.
Answer testErrorLog(const Request& request, const ReadWriteTest& test) {
    constexpr size_t kMostTold = 19;
    std::vector<LoggedError>& log = request.device.board.errorLog;
    if (test.options[0] > 1) {
        return answer(request.packet, kBadParameter);
    }
    if (test.options[0] == 1) {
        log.clear();
        return answer(request.packet, hoxi::kComplete);
    }
    ReportWriter report = valueReport(request, hoxi::CMD_READ_WRITE_TEST, static_cast<int32_t>(log.size()));
    report.u32(test.target);
    for (size_t i = log.size() - std::min(log.size(), kMostTold); i < log.size(); ++i) {
        report.u32(log[i].code).u32(static_cast<uint32_t>(log[i].state));
    }
    return answerWithData(request.packet, report);
}

// Which values, to be read or to be checked: they are all the same, and as they should be.
Answer testVesk(const Request& request, const ReadWriteTest& test) {
    constexpr uint32_t kLastRead = 3;
    constexpr uint32_t kLastCheck = 7;
    constexpr uint8_t kCamera = 1;
    constexpr uint16_t kFirstGain = 43;
    if (test.options[0] > kLastCheck) {
        return answer(request.packet, kBadParameter);
    }
    const uint16_t value =
        test.options[0] <= kLastRead ? request.device.board.registers.read(kCamera, kFirstGain) : uint16_t{0};
    return answerValue(request, test, value);
}

Answer runReadWriteTest(const Request& request) {
    PayloadReader payload(request.packet.payload);
    ReadWriteTest test{payload.u32(), {}};
    for (uint32_t& option : test.options) {
        option = payload.u32();
    }
    if (payload.isMissing() || test.target > kVesk) {
        return answer(request.packet, kBadParameter);
    }
    switch (test.target) {
        case kBankMemory:
            return testBank(request, test);
        case kLogicRegisters:
        case kCameraLogicRegisters:
            return testRegister(request, test);
        case kErrorLog:
            return testErrorLog(request, test);
        default:
            return testVesk(request, test);
    }
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_SET_DFC_MASK, runSetMask},          {hoxi::CMD_GET_DFC_MASK, answerMask},
    {hoxi::CMD_CONFIG_SERIAL, runConfigSerial},    {hoxi::CMD_XMT_SERIAL, runTransmitSerial},
    {hoxi::CMD_WRT_I2C, runWriteRegister},         {hoxi::CMD_READ_I2C, runReadRegister},
    {hoxi::CMD_WRT_EEPROM, runWriteEeprom},        {hoxi::CMD_READ_EEPROM, runReadEeprom},
    {hoxi::CMD_SET_STATUS_LEDS, runSetLeds},       {hoxi::CMD_GET_STATUS_LEDS, answerLeds},
    {hoxi::CMD_READ_WRITE_TEST, runReadWriteTest},
};

}  // namespace

std::span<const CommandRow> boardCommands() {
    return kRows;
}

}  // namespace simulator
