// The memories and registers of a scanner's boards, as the service commands read and write them. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace simulator {

inline constexpr size_t kEepromSize = 8192;
inline constexpr size_t kLedCount = 13;

// The registers of the cameras and of what else hangs on their bus, by device. Each keeps what was last written.
class DeviceRegisters {
public:
    uint16_t read(uint8_t device, uint16_t number) const;
    void write(uint8_t device, uint16_t number, uint16_t value) { values_[{device, number}] = value; }

private:
    std::map<std::pair<uint8_t, uint16_t>, uint16_t> values_;
};

// The registers of the programmable logic, by chip, and its memory banks, of which the latest fillings are remembered.
class LogicMemory {
public:
    static constexpr size_t kMostFillings = 64;

    uint32_t readRegister(uint32_t chip, uint16_t number) const;
    void writeRegister(uint32_t chip, uint16_t number, uint32_t value) { registers_[{chip, number}] = value; }
    // Words of 16 bits, by their number within the bank.
    uint16_t readBank(uint32_t bank, uint32_t address) const;
    void fillBank(uint32_t bank, uint32_t address, uint32_t count, uint16_t value);

private:
    struct Filling {
        uint32_t bank;
        uint32_t address;
        uint32_t count;
        uint16_t value;
    };
    std::map<std::pair<uint32_t, uint16_t>, uint32_t> registers_;
    std::vector<Filling> fillings_;  // the latest last
};

// A command that was refused when it came.
struct LoggedError {
    uint32_t code;
    int32_t state;
};

struct Board {
    static constexpr size_t kMostErrors = 64;

    // EEPROM and error log survive a reset; all else does not.
    std::vector<uint8_t> eeprom = std::vector<uint8_t>(kEepromSize, 0xFF);
    std::vector<LoggedError> errorLog;  // the latest last
    DeviceRegisters registers;
    LogicMemory logic;
    std::array<uint32_t, kLedCount> leds{};
    uint32_t dfcMask = 0;

    void logError(uint32_t code, int32_t state);
    void powerUp();
};

}  // namespace simulator
