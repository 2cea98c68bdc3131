#include "simulator/inspection.h"

#include <mutex>

#include "simulator/bus.h"

namespace simulator {

std::vector<uint8_t> flashContents(size_t scanner, uint32_t code) {
    const std::lock_guard lock(bus().mutex);
    const auto& flash = bus().scanners.at(scanner).device().flash;
    const auto found = flash.find(code);
    return found == flash.end() ? std::vector<uint8_t>{} : found->second;
}

LocalDisplay localDisplay(size_t scanner) {
    const std::lock_guard lock(bus().mutex);
    return bus().scanners.at(scanner).device().display;
}

RemoteDisplay remoteDisplay(size_t scanner) {
    const std::lock_guard lock(bus().mutex);
    return bus().scanners.at(scanner).device().remoteDisplay;
}

}  // namespace simulator
