#include "simulator/device.h"

#include "simulator/noise.h"

namespace simulator {

Device::Device(const ScannerPlan& plan, size_t index)
    : latencyMs(static_cast<uint64_t>(plan.latencyMs)),
      blockLimit(static_cast<uint64_t>(plan.dataBufferSize)),
      seed(mixBits(static_cast<uint64_t>(plan.seed)) + index),
      images(static_cast<uint64_t>(plan.imageMemory)),
      parameters(plan) {
    resolutions.fill(static_cast<uint32_t>(plan.resolution));
}

uint64_t Device::nextSeed(uint32_t handle) {
    return mixBits(mixBits(seed + ++captures) + handle);
}

void Device::powerUp(const ScannerPlan& plan) {
    images.clear();
    references = {};
    resolutions.fill(static_cast<uint32_t>(plan.resolution));
    captureDesk.clear();
    imageChannel.close();
    memoryChannel.close();
    bitmapChannel.close();
    board.powerUp();
    parameters.restore();
    display = {};
    remoteDisplay = {};
    outbox.forgetCommands();
}

}  // namespace simulator
