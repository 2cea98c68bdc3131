// A simulated bus as data: which scanners there are, how they behave, and what goes wrong when.
//
// Every default is that of one healthy scanner. Numbers are 64-bit and signed whatever their use, so that one kind of
// field serves the reader; the ranges that it admits stand in scenario_keys.cpp. Times are milliseconds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace simulator {

// An optional number that the scenario leaves out.
inline constexpr int64_t kNotGiven = std::numeric_limits<int64_t>::min();

// The functions of the library, as faults name them.
enum class Function : int64_t {
    Initialize,
    Terminate,
    SetTimeouts,
    BreakEnable,
    BusReset,
    GetVersion,
    // From here on each call is of one scanner.
    GetBufSize,
    PutCommand,
    GetStatus,
    PutMemory,
    GetMemory,
    PutImage,
    GetImage,
    PutBitmap,
    SetVideoBandParams,
    StartVideo,
    SubmitVideoRequest,
    GetVideoResult,
    GetVideoBandPosition,
    StopVideo,
};

constexpr bool hasScanner(Function function) {
    return function >= Function::GetBufSize;
}

// The reports that a scanner answers a command with, by what they tell.
enum class Stage : int64_t {
    Pending,
    Data,      // what the command asked for
    Complete,  // of a command that also ends later, as a transfer does, each of its ends
    Progress,  // of a capture
    Ready,     // a transfer may begin
    Done,      // a transfer is over
};
inline constexpr size_t kStageCount = 6;

struct LibraryPlan {
    std::string version = "1.0.0.0";
    int64_t scanners = kNotGiven;  // as many as are described, or one
};

struct ScannerPlan {
    std::string make = "TAMSEL";
    std::string model = "MX1400";
    std::string serial;  // numbered by the scanner's place when empty
    int64_t year = 2024;
    int64_t month = 3;
    int64_t day = 15;
    std::string softwareVersion = "1.00";
    int64_t softwareYear = 2025;
    int64_t softwareMonth = 6;
    int64_t softwareDay = 30;
    std::string imageVersion = "1.00";
    int64_t firstBufferSize = 4096;
    int64_t secondBufferSize = 4096;
    int64_t dataBufferSize = 1'048'576;
    int64_t latencyMs = 2;    // from a command to its first report
    int64_t workMs = 5;       // from the first report of a command to its last
    int64_t offBusMs = 5000;  // from a reset until the scanner is on the bus again
    int64_t bootMs = 12'000;  // from a reset until the scanner serves again and says so
    bool bootReport = true;   // whether it says so
    int64_t seed = 1;         // of everything that chance decides
    int64_t resolution = 500;
    int64_t fingerWidth = 800;
    int64_t fingerHeight = 750;
    int64_t slapWidth = 1600;
    int64_t slapHeight = 1500;
    int64_t palmWidth = 2500;
    int64_t palmHeight = 2500;
    int64_t handWidth = 2500;
    int64_t handHeight = 4000;
    int64_t imageMemory = 67'108'864;
    int64_t contactMs = 300;  // from the start of a capture until the person touches the platen
    int64_t captureMs = 400;  // from then until the image is there
    int64_t blockMs = 0;      // what a call of a data channel takes
    int64_t recordMs = 200;   // from the last byte of an upload until it is recorded
    // Where pictures of the local display and of the remote gray map are written; nowhere when empty.
    std::string displayFile;
    std::string remoteMapFile;
};

// What must have happened before something begins; all three must hold. Commands are those that the scanner has
// accepted, reports those that have been fetched from it.
struct Trigger {
    int64_t atMs = 0;
    int64_t afterCommands = 0;
    int64_t afterReports = 0;
};

// Which of the occasions that come by are meant: from the nth on each every-th, count of them, 0 without end.
struct Occurrence {
    int64_t nth = 1;
    int64_t every = 1;
    int64_t count = 1;
};

// A library call that fails.
struct CallFault : Trigger, Occurrence {
    int64_t function = kNotGiven;
    int64_t scanner = kNotGiven;
    int64_t command = kNotGiven;
    int64_t result = kNotGiven;
};

// A report of an answer that does not come, comes late or says something else.
struct AnswerFault : Occurrence {
    int64_t scanner = kNotGiven;
    int64_t command = kNotGiven;
    int64_t stage = static_cast<int64_t>(Stage::Complete);
    int64_t part = 0;  // which of the reports of this stage, 0 for each
    bool drop = false;
    int64_t delayMs = 0;
    int64_t state = kNotGiven;
    int64_t word = 0;  // of the body
    int64_t value = kNotGiven;
};

enum class LastFlag : int64_t { Set, Clear };

// A call of a data channel that does something else than it was asked to.
struct TransferFault : Occurrence {
    int64_t function = kNotGiven;
    int64_t scanner = kNotGiven;
    int64_t result = 0;
    int64_t move = kNotGiven;     // most bytes that it moves
    int64_t claimMore = 0;        // how many more it says it has moved
    int64_t corrupt = kNotGiven;  // place of a byte that it changes
    int64_t lastFlag = kNotGiven;
};

// A scanner that is pulled off the bus for good.
struct Unplug : Trigger {
    int64_t scanner = kNotGiven;
};

// Reports that no command asked for.
struct UnaskedReport : Trigger {
    int64_t scanner = kNotGiven;
    int64_t count = 1;
    int64_t periodMs = 0;  // 0: each as soon as the one before has been fetched
    int64_t code = kNotGiven;
    int64_t state = 0;
    int64_t tag = 0;
    int64_t tagStep = 0;
    std::vector<int64_t> words;
    std::vector<int64_t> bytes;
    std::string text;
    bool terminated = true;
    int64_t fill = 0;
    int64_t size = kNotGiven;
};

struct Scenario {
    LibraryPlan library;
    std::vector<ScannerPlan> scanners;
    std::vector<CallFault> callFaults;
    std::vector<AnswerFault> answerFaults;
    std::vector<TransferFault> transferFaults;
    std::vector<Unplug> unplugs;
    std::vector<UnaskedReport> reports;
};

// The number of scanners on the bus.
size_t scannerCount(const Scenario& scenario);
// How the scanner at a place behaves, with its serial number filled in.
ScannerPlan scannerPlan(const Scenario& scenario, size_t index);

}  // namespace simulator
