#include "simulator/board.h"

#include <algorithm>

namespace simulator {

namespace {

// The four gain registers of a camera start at the gain of one.
constexpr uint16_t kFirstGain = 43;
constexpr uint16_t kLastGain = 46;
constexpr uint16_t kGainOfOne = 8;
constexpr uint8_t kRightCamera = 1;
constexpr uint8_t kLeftCamera = 2;

template <typename Map>
auto valueOr(const Map& map, const typename Map::key_type& key, typename Map::mapped_type otherwise) {
    const auto found = map.find(key);
    return found == map.end() ? otherwise : found->second;
}

}  // namespace

uint16_t DeviceRegisters::read(uint8_t device, uint16_t number) const {
    const bool isCamera = device == kRightCamera || device == kLeftCamera;
    const bool isGain = isCamera && number >= kFirstGain && number <= kLastGain;
    return valueOr(values_, std::pair{device, number}, isGain ? kGainOfOne : uint16_t{0});
}

uint32_t LogicMemory::readRegister(uint32_t chip, uint16_t number) const {
    return valueOr(registers_, std::pair{chip, number}, 0);
}

uint16_t LogicMemory::readBank(uint32_t bank, uint32_t address) const {
    const auto covers = [&](const Filling& filling) {
        return filling.bank == bank && address >= filling.address && address - filling.address < filling.count;
    };
    const auto found = std::find_if(fillings_.rbegin(), fillings_.rend(), covers);
    return found == fillings_.rend() ? uint16_t{0} : found->value;
}

void LogicMemory::fillBank(uint32_t bank, uint32_t address, uint32_t count, uint16_t value) {
    if (fillings_.size() == kMostFillings) {
        fillings_.erase(fillings_.begin());
    }
    fillings_.push_back({bank, address, count, value});
}

void Board::logError(uint32_t code, int32_t state) {
    if (errorLog.size() == kMostErrors) {
        errorLog.erase(errorLog.begin());
    }
    errorLog.push_back({code, state});
}

void Board::powerUp() {
    registers = {};
    logic = {};
    leds = {};
    dfcMask = 0;
}

}  // namespace simulator
