// The library's one state: the bus, its scanners and the calls that are under way.
//
// One mutex guards everything. Every call holds it from beginning to end, but for a fetch that waits; so closing the
// library waits for the fetches alone. The state lives until the process ends and is never destroyed, since threads
// of the program may still be inside the library when main returns.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "hoxi/hoxi.h"
#include "simulator/faults.h"
#include "simulator/scanner.h"
#include "simulator/scenario.h"

namespace simulator {

struct Bus {
    std::mutex mutex;
    std::condition_variable changed;  // a waiting fetch should look again
    std::condition_variable left;     // a waiting fetch has gone
    bool open = false;
    bool closing = false;
    uint32_t waiting = 0;  // fetches inside the library
    uint64_t calls = 0;    // serial number of the last call

    // What the scanners were made from: the scenario's path and text. They live on over HoxiTerminate, as devices that
    // stay powered, until another scenario is chosen.
    bool built = false;
    std::string source;
    Scenario scenario;
    uint64_t startMs = 0;
    CallFaults callFaults;  // of the calls that name no scanner
    std::vector<Scanner> scanners;
    std::vector<size_t> onBus;  // the scanners that the last HoxiInitialize found, by index of the program

    uint32_t putTimeoutMs = 1000;
    uint32_t getTimeoutMs = 1000;
    bool breakEnabled = false;
};

Bus& bus();

// Puts the state back to that of a process that has not called the library yet. Ends fetches that wait. Any thread.
void resetBus();

HoxiResult openBus(uint32_t& scannerCount);
HoxiResult closeBus();

// One call of the library: holds the lock while it lives, and has looked whether the library is open, whether the
// scanner is there and whether the scenario lets the call fail. Only when result() is 0 may the rest be used.
class Call {
public:
    explicit Call(Function function);
    Call(Function function, uint32_t scannerIndex, int64_t command = kNotGiven);

    HoxiResult result() const { return result_; }
    Scanner& scanner() { return *scanner_; }
    uint64_t nowMs() const { return nowMs_; }

private:
    std::unique_lock<std::mutex> lock_;
    HoxiResult result_;
    Scanner* scanner_ = nullptr;
    uint64_t nowMs_ = 0;
};

// Waits for a report of the scanner.
HoxiResult fetchReport(uint32_t scannerIndex, Report& report);

}  // namespace simulator
