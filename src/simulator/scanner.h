// One simulated scanner: its state behind the command interpreter, and what it has to say.
//
// It has no thread of its own: everything that it does by itself has a time, and is looked at when somebody asks. Not
// locked; the bus guards it. Times are those of platform::nowMs().
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "simulator/answer.h"
#include "simulator/command_packet.h"
#include "simulator/commands.h"
#include "simulator/device.h"
#include "simulator/faults.h"
#include "simulator/scenario.h"

namespace simulator {

class Scanner {
public:
    // The scanner at a place of the scenario, powered up and ready at startMs.
    Scanner(const Scenario& scenario, size_t index, uint64_t startMs);

    const ScannerPlan& plan() const { return plan_; }
    Device& device() { return device_; }

    // Whether it was pulled off. Pulled off once, it stays away.
    bool isUnplugged(uint64_t nowMs);
    // Whether it can be reached: neither pulled off nor away because of a reset.
    bool isOnBus(uint64_t nowMs);
    // The library has found it: what it said before it went down is not heard any more.
    void connect();

    // The result that the scenario has for this call, 0 for none.
    HoxiResult faultOf(const LibraryCall& call, uint64_t nowMs);
    // Takes a command and queues its answer.
    void execute(const CommandPacket& packet, uint64_t nowMs);
    // Moves a block of an image to the program or from it.
    BlockResult getImage(std::span<uint8_t> block, uint64_t nowMs) {
        return device_.imageChannel.get(block, nowMs, device_);
    }
    BlockResult putImage(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs) {
        return device_.imageChannel.put(block, flags, nowMs, device_);
    }
    // Moves a block of the memory channel to the program or from it, or of the bitmap channel from it.
    BlockResult getMemory(std::span<uint8_t> block, uint64_t nowMs) {
        return device_.memoryChannel.get(block, nowMs, device_);
    }
    BlockResult putMemory(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs) {
        return putData(device_.memoryChannel, block, flags, nowMs);
    }
    BlockResult putBitmap(std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs) {
        return putData(device_.bitmapChannel, block, flags, nowMs);
    }
    // The next report if one is due.
    std::optional<Report> takeReport(uint64_t nowMs);
    // When a fetch should look again: the next report, fault or unplugging that time alone brings; kNever for none.
    uint64_t nextEventMs(uint64_t nowMs);

    // Goes down at once and comes back by itself: first onto the bus, then to work. What it has not said by now is
    // lost.
    void reset(uint64_t nowMs);

private:
    Progress progress(uint64_t nowMs) const { return {startMs_, nowMs, commands_, reports_}; }
    uint64_t queueAnswer(const Answer& answer, Reply& reply, uint64_t startMs);
    void goOn(Answer& answer, const Reply& reply, uint64_t dueMs, uint64_t startMs);
    BlockResult putData(DataChannel& channel, std::span<const uint8_t> block, uint32_t flags, uint64_t nowMs);
    void logErrors(uint32_t code, const Answer& answer);
    void saveDisplays();
    ReportSource* nextSource(uint64_t nowMs, uint64_t& dueMs);

    ScannerPlan plan_;
    uint64_t startMs_;
    std::vector<Unplug> unplugs_;
    CallFaults callFaults_;
    AnswerFaults answerFaults_;
    std::vector<ReportSource> sources_;

    Device device_;
    uint64_t commands_ = 0;       // accepted
    uint64_t reports_ = 0;        // fetched
    uint64_t idleMs_ = 0;         // when the interpreter is free for the next command
    uint64_t offBusUntilMs_ = 0;  // of the last reset
    uint64_t bootedMs_ = 0;       // likewise
    bool unplugged_ = false;
};

}  // namespace simulator
