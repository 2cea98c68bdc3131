// What the values of a scenario must be together, beyond the range that each key has by itself. Pure.
//
// Each check returns the reason why the record cannot be used, empty when it can.
#pragma once

#include <string>

#include "simulator/scenario.h"

namespace simulator {

std::string checkRecord(const Scenario& scenario, const LibraryPlan& plan);
std::string checkRecord(const Scenario& scenario, const ScannerPlan& plan);
std::string checkRecord(const Scenario& scenario, const CallFault& fault);
std::string checkRecord(const Scenario& scenario, const AnswerFault& fault);
std::string checkRecord(const Scenario& scenario, const TransferFault& fault);
std::string checkRecord(const Scenario& scenario, const Unplug& unplug);
std::string checkRecord(const Scenario& scenario, const UnaskedReport& report);

}  // namespace simulator
