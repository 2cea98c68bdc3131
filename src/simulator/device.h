// What a scanner is made of behind its interface: all that commands read and change. Not locked; the bus guards it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "simulator/board.h"
#include "simulator/capture_desk.h"
#include "simulator/data_channel.h"
#include "simulator/faults.h"
#include "simulator/image_channel.h"
#include "simulator/image_store.h"
#include "simulator/local_display.h"
#include "simulator/outbox.h"
#include "simulator/parameter_store.h"
#include "simulator/scenario.h"

namespace simulator {

// The parts of a scanner that see for themselves, each with references and a resolution of its own.
inline constexpr size_t kCameraCount = 4;

// What a part's images are corrected with.
struct Reference {
    std::optional<Image> equal;
    std::optional<Image> dark;
};

struct Device {
    Device(const ScannerPlan& plan, size_t index);

    // The seed of the next picture for a handle: no two are alike.
    uint64_t nextSeed(uint32_t handle);
    // Loses all that is lost without power.
    void powerUp(const ScannerPlan& plan);

    uint64_t latencyMs;
    uint64_t blockLimit;  // most bytes of one call of a channel
    uint64_t seed;
    uint64_t captures = 0;
    ImageStore images;
    std::array<Reference, kCameraCount> references;
    std::array<uint32_t, kCameraCount> resolutions{};  // pixels per inch
    CaptureDesk captureDesk;
    ImageChannel imageChannel;
    DataChannel memoryChannel{Function::PutMemory, Function::GetMemory};
    DataChannel bitmapChannel{Function::PutBitmap, Function::GetMemory};
    TransferFaults transferFaults;
    Board board;
    ParameterStore parameters;
    std::map<uint32_t, std::vector<uint8_t>> flash;  // what was uploaded last, by command code; survives a reset
    LocalDisplay display;
    RemoteDisplay remoteDisplay;
    Outbox outbox;
};

}  // namespace simulator
