#include "simulator/scenario.h"

#include <algorithm>

namespace simulator {

size_t scannerCount(const Scenario& scenario) {
    if (scenario.library.scanners != kNotGiven) {
        return static_cast<size_t>(scenario.library.scanners);
    }
    return std::max<size_t>(scenario.scanners.size(), 1);
}

ScannerPlan scannerPlan(const Scenario& scenario, size_t index) {
    ScannerPlan plan = index < scenario.scanners.size() ? scenario.scanners[index] : ScannerPlan{};
    if (plan.serial.empty()) {
        const std::string number = std::to_string(index + 1);
        plan.serial = "SIM-" + std::string(4 - std::min<size_t>(number.size(), 4), '0') + number;
    }
    return plan;
}

}  // namespace simulator
