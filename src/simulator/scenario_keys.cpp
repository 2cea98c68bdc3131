#include "simulator/scenario_keys.h"

namespace simulator {

namespace {

constexpr int64_t kMaxWord = 0xFFFFFFFF;
constexpr Range kAnyWord{0, kMaxWord};
constexpr Range kSignedWord{-0x80000000LL, kMaxWord};
constexpr Range kByte{0, 255};
constexpr Range kShort{0, 65535};
constexpr Range kDuration{0, 86'400'000};
constexpr Range kCount{0, 1'000'000'000};
constexpr Range kOrdinal{1, 1'000'000'000};
constexpr Range kScannerIndex{0, 63};
constexpr Range kBufferSize{0, 0x7FFF'FFFF'FFFF'FFFF};
constexpr Range kResolution{50, 1200};
constexpr Range kImageMemory{0, 0x2000'0000};
constexpr size_t kBody = 168;

constexpr int64_t number(Function function) {
    return static_cast<int64_t>(function);
}

constexpr Choice kFunctions[] = {
    {"HoxiInitialize", number(Function::Initialize)},
    {"HoxiTerminate", number(Function::Terminate)},
    {"HoxiSetTimeouts", number(Function::SetTimeouts)},
    {"HoxiBreakEnable", number(Function::BreakEnable)},
    {"HoxiBusReset", number(Function::BusReset)},
    {"HoxiGetVersion", number(Function::GetVersion)},
    {"HoxiGetBufSize", number(Function::GetBufSize)},
    {"HoxiPutCommand", number(Function::PutCommand)},
    {"HoxiGetStatus", number(Function::GetStatus)},
    {"HoxiPutMemory", number(Function::PutMemory)},
    {"HoxiGetMemory", number(Function::GetMemory)},
    {"HoxiPutImage", number(Function::PutImage)},
    {"HoxiGetImage", number(Function::GetImage)},
    {"HoxiPutBitmap", number(Function::PutBitmap)},
    {"HoxiSetVideoBandParams", number(Function::SetVideoBandParams)},
    {"HoxiStartVideo", number(Function::StartVideo)},
    {"HoxiSubmitVideoRequest", number(Function::SubmitVideoRequest)},
    {"HoxiGetVideoResult", number(Function::GetVideoResult)},
    {"HoxiGetVideoBandPosition", number(Function::GetVideoBandPosition)},
    {"HoxiStopVideo", number(Function::StopVideo)},
};

constexpr Choice kStages[] = {
    {"pending", static_cast<int64_t>(Stage::Pending)},   {"data", static_cast<int64_t>(Stage::Data)},
    {"complete", static_cast<int64_t>(Stage::Complete)}, {"progress", static_cast<int64_t>(Stage::Progress)},
    {"ready", static_cast<int64_t>(Stage::Ready)},       {"done", static_cast<int64_t>(Stage::Done)},
};

constexpr Choice kTransfers[] = {
    {"HoxiGetImage", number(Function::GetImage)},   {"HoxiPutImage", number(Function::PutImage)},
    {"HoxiGetMemory", number(Function::GetMemory)}, {"HoxiPutMemory", number(Function::PutMemory)},
    {"HoxiPutBitmap", number(Function::PutBitmap)},
};

constexpr Choice kLastFlags[] = {
    {"set", static_cast<int64_t>(LastFlag::Set)},
    {"clear", static_cast<int64_t>(LastFlag::Clear)},
};

const Key<LibraryPlan> kLibraryKeys[] = {
    {"version", &LibraryPlan::version, {0, 255}},
    {"scanners", &LibraryPlan::scanners, {0, 64}},
};

const Key<ScannerPlan> kScannerKeys[] = {
    {"make", &ScannerPlan::make, {0, 8}},
    {"model", &ScannerPlan::model, {0, 16}},
    {"serial", &ScannerPlan::serial, {0, 16}},
    {"year", &ScannerPlan::year, kShort},
    {"month", &ScannerPlan::month, kByte},
    {"day", &ScannerPlan::day, kByte},
    {"software_version", &ScannerPlan::softwareVersion, {0, 12}},
    {"software_year", &ScannerPlan::softwareYear, kShort},
    {"software_month", &ScannerPlan::softwareMonth, kByte},
    {"software_day", &ScannerPlan::softwareDay, kByte},
    {"image_version", &ScannerPlan::imageVersion, {0, kBody - 1}},
    {"first_buffer_size", &ScannerPlan::firstBufferSize, kBufferSize},
    {"second_buffer_size", &ScannerPlan::secondBufferSize, kBufferSize},
    {"data_buffer_size", &ScannerPlan::dataBufferSize, kBufferSize},
    {"latency_ms", &ScannerPlan::latencyMs, kDuration},
    {"work_ms", &ScannerPlan::workMs, kDuration},
    {"off_bus_ms", &ScannerPlan::offBusMs, kDuration},
    {"boot_ms", &ScannerPlan::bootMs, kDuration},
    {"boot_report", &ScannerPlan::bootReport, {}},
    {"seed", &ScannerPlan::seed, kAnyWord},
    {"resolution", &ScannerPlan::resolution, kResolution},
    {"finger_width", &ScannerPlan::fingerWidth, kAnyWord},
    {"finger_height", &ScannerPlan::fingerHeight, kAnyWord},
    {"slap_width", &ScannerPlan::slapWidth, kAnyWord},
    {"slap_height", &ScannerPlan::slapHeight, kAnyWord},
    {"palm_width", &ScannerPlan::palmWidth, kAnyWord},
    {"palm_height", &ScannerPlan::palmHeight, kAnyWord},
    {"hand_width", &ScannerPlan::handWidth, kAnyWord},
    {"hand_height", &ScannerPlan::handHeight, kAnyWord},
    {"image_memory", &ScannerPlan::imageMemory, kImageMemory},
    {"contact_ms", &ScannerPlan::contactMs, kDuration},
    {"capture_ms", &ScannerPlan::captureMs, kDuration},
    {"block_ms", &ScannerPlan::blockMs, kDuration},
    {"record_ms", &ScannerPlan::recordMs, kDuration},
    {"display_file", &ScannerPlan::displayFile, {0, 255}},
    {"remote_map_file", &ScannerPlan::remoteMapFile, {0, 255}},
};

const Key<CallFault> kCallFaultKeys[] = {
    {"function", &CallFault::function, {}, 0, true, kFunctions},
    {"result", &CallFault::result, {1, kMaxWord}, 0, true},
    {"scanner", &CallFault::scanner, kScannerIndex},
    {"command", &CallFault::command, kAnyWord},
    {"nth", &CallFault::nth, kOrdinal},
    {"every", &CallFault::every, kOrdinal},
    {"count", &CallFault::count, kCount},
    {"at_ms", &CallFault::atMs, kDuration},
    {"after_commands", &CallFault::afterCommands, kCount},
    {"after_reports", &CallFault::afterReports, kCount},
};

const Key<AnswerFault> kAnswerFaultKeys[] = {
    {"scanner", &AnswerFault::scanner, kScannerIndex},
    {"command", &AnswerFault::command, kAnyWord},
    {"stage", &AnswerFault::stage, {}, 0, false, kStages},
    {"part", &AnswerFault::part, kCount},
    {"drop", &AnswerFault::drop, {}},
    {"delay_ms", &AnswerFault::delayMs, kDuration},
    {"state", &AnswerFault::state, kSignedWord},
    {"word", &AnswerFault::word, {0, kBody / 4 - 1}},
    {"value", &AnswerFault::value, kSignedWord},
    {"nth", &AnswerFault::nth, kOrdinal},
    {"every", &AnswerFault::every, kOrdinal},
    {"count", &AnswerFault::count, kCount},
};

const Key<TransferFault> kTransferFaultKeys[] = {
    {"function", &TransferFault::function, {}, 0, true, kTransfers},
    {"scanner", &TransferFault::scanner, kScannerIndex},
    {"result", &TransferFault::result, kAnyWord},
    {"move", &TransferFault::move, kAnyWord},
    {"claim_more", &TransferFault::claimMore, kAnyWord},
    {"corrupt", &TransferFault::corrupt, kAnyWord},
    {"last_flag", &TransferFault::lastFlag, {}, 0, false, kLastFlags},
    {"nth", &TransferFault::nth, kOrdinal},
    {"every", &TransferFault::every, kOrdinal},
    {"count", &TransferFault::count, kCount},
};

const Key<Unplug> kUnplugKeys[] = {
    {"scanner", &Unplug::scanner, kScannerIndex},
    {"at_ms", &Unplug::atMs, kDuration},
    {"after_commands", &Unplug::afterCommands, kCount},
    {"after_reports", &Unplug::afterReports, kCount},
};

const Key<UnaskedReport> kReportKeys[] = {
    {"code", &UnaskedReport::code, kAnyWord, 0, true},
    {"scanner", &UnaskedReport::scanner, kScannerIndex},
    {"state", &UnaskedReport::state, kSignedWord},
    {"tag", &UnaskedReport::tag, kAnyWord},
    {"tag_step", &UnaskedReport::tagStep, kAnyWord},
    {"words", &UnaskedReport::words, kSignedWord, kBody / 4},
    {"bytes", &UnaskedReport::bytes, kByte, kBody},
    {"text", &UnaskedReport::text, {0, kBody}},
    {"terminated", &UnaskedReport::terminated, {}},
    {"fill", &UnaskedReport::fill, kByte},
    {"size", &UnaskedReport::size, kAnyWord},
    {"count", &UnaskedReport::count, kCount},
    {"period_ms", &UnaskedReport::periodMs, kDuration},
    {"at_ms", &UnaskedReport::atMs, kDuration},
    {"after_commands", &UnaskedReport::afterCommands, kCount},
    {"after_reports", &UnaskedReport::afterReports, kCount},
};

std::string rangeText(Range range) {
    return std::to_string(range.least) + " to " + std::to_string(range.most);
}

std::string choiceNames(std::span<const Choice> choices) {
    std::string names;
    for (const Choice& choice : choices) {
        names += (names.empty() ? "" : ", ") + std::string(choice.name);
    }
    return names;
}

// What a field of each kind is called, may be and is at the start.
template <typename Record>
struct Describe {
    const Key<Record>& key;
    KeyText& text;
    const Record& start;

    void operator()(int64_t Record::*field) {
        const int64_t value = start.*field;
        text.type = key.choices.empty() ? "number" : "name";
        text.range = key.choices.empty() ? rangeText(key.range) : choiceNames(key.choices);
        text.start = value == kNotGiven    ? "none"
                     : key.choices.empty() ? std::to_string(value)
                                           : std::string(key.choices[static_cast<size_t>(value)].name);
    }
    void operator()(bool Record::*field) {
        text.type = "flag";
        text.range = "true, false";
        text.start = start.*field ? "true" : "false";
    }
    void operator()(std::string Record::*field) {
        text.type = "text";
        text.range = rangeText(key.range) + " bytes";
        text.start = start.*field;
        text.start = text.start.empty() ? "empty" : text.start;
    }
    void operator()(std::vector<int64_t> Record::*) {
        text.type = "list";
        text.range = "at most " + std::to_string(key.mostCount) + " of " + rangeText(key.range);
        text.start = "empty";
    }
};

template <typename Record>
void describeSection(std::vector<KeyText>& texts) {
    static const Record kStart;
    const Section<Record> section = sectionOf<Record>();
    for (const Key<Record>& key : section.keys) {
        KeyText& text = texts.emplace_back();
        text.section = section.name;
        text.name = key.name;
        std::visit(Describe<Record>{key, text, kStart}, key.field);
        if (key.required) {
            text.start = "required";
        }
    }
}

}  // namespace

template <>
Section<LibraryPlan> sectionOf() {
    return {"library", kLibraryKeys};
}

template <>
Section<ScannerPlan> sectionOf() {
    return {"scanner", kScannerKeys};
}

template <>
Section<CallFault> sectionOf() {
    return {"call_fault", kCallFaultKeys};
}

template <>
Section<AnswerFault> sectionOf() {
    return {"answer_fault", kAnswerFaultKeys};
}

template <>
Section<TransferFault> sectionOf() {
    return {"transfer_fault", kTransferFaultKeys};
}

template <>
Section<Unplug> sectionOf() {
    return {"unplug", kUnplugKeys};
}

template <>
Section<UnaskedReport> sectionOf() {
    return {"report", kReportKeys};
}

std::vector<KeyText> describeKeys() {
    std::vector<KeyText> texts;
    describeSection<LibraryPlan>(texts);
    describeSection<ScannerPlan>(texts);
    describeSection<CallFault>(texts);
    describeSection<AnswerFault>(texts);
    describeSection<TransferFault>(texts);
    describeSection<Unplug>(texts);
    describeSection<UnaskedReport>(texts);
    return texts;
}

}  // namespace simulator
