#include "simulator/scenario_check.h"

#include "simulator/report_writer.h"

namespace simulator {

namespace {

std::string checkIndex(const Scenario& scenario, int64_t index) {
    if (index == kNotGiven || index < static_cast<int64_t>(scannerCount(scenario))) {
        return "";
    }
    return "scanner " + std::to_string(index) + " does not exist, the bus has " +
           std::to_string(scannerCount(scenario));
}

bool isCounted(const Trigger& trigger) {
    return trigger.afterCommands > 0 || trigger.afterReports > 0;
}

}  // namespace

std::string checkRecord(const Scenario&, const LibraryPlan&) {
    return "";
}

std::string checkRecord(const Scenario& scenario, const ScannerPlan& plan) {
    if (scenario.scanners.size() > scannerCount(scenario)) {
        return "more scanners are described than library.scanners says";
    }
    return plan.bootMs < plan.offBusMs ? "boot_ms is shorter than off_bus_ms" : "";
}

std::string checkRecord(const Scenario& scenario, const CallFault& fault) {
    const auto function = static_cast<Function>(fault.function);
    if (!hasScanner(function) && (fault.scanner != kNotGiven || isCounted(fault))) {
        return "the function is of no scanner";
    }
    if (function != Function::PutCommand && fault.command != kNotGiven) {
        return "only HoxiPutCommand has a command";
    }
    return checkIndex(scenario, fault.scanner);
}

std::string checkRecord(const Scenario& scenario, const AnswerFault& fault) {
    if (!fault.drop && fault.delayMs == 0 && fault.state == kNotGiven && fault.value == kNotGiven) {
        return "none of drop, delay_ms, state and value is given";
    }
    return checkIndex(scenario, fault.scanner);
}

std::string checkRecord(const Scenario& scenario, const TransferFault& fault) {
    if (fault.result == 0 && fault.move == kNotGiven && fault.claimMore == 0 && fault.corrupt == kNotGiven &&
        fault.lastFlag == kNotGiven) {
        return "none of result, move, claim_more, corrupt and last_flag is given";
    }
    const auto function = static_cast<Function>(fault.function);
    const bool isToProgram = function == Function::GetImage || function == Function::GetMemory;
    if (!isToProgram && fault.lastFlag != kNotGiven) {
        return "only HoxiGetImage and HoxiGetMemory have a last flag";
    }
    return checkIndex(scenario, fault.scanner);
}

std::string checkRecord(const Scenario& scenario, const Unplug& unplug) {
    if (unplug.atMs == 0 && !isCounted(unplug)) {
        return "none of at_ms, after_commands and after_reports is given";
    }
    return checkIndex(scenario, unplug.scanner);
}

std::string checkRecord(const Scenario& scenario, const UnaskedReport& report) {
    const size_t textSize = report.text.empty() ? 0 : report.text.size() + (report.terminated ? 1 : 0);
    const size_t size = report.words.size() * 4 + report.bytes.size() + textSize;
    if (size > kReportBodySize) {
        return "the body has " + std::to_string(size) + " bytes, a report holds " + std::to_string(kReportBodySize);
    }
    return checkIndex(scenario, report.scanner);
}

}  // namespace simulator
