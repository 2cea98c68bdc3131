// The parts of a scanner that see for themselves, and what is particular to each. A constexpr table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "simulator/device.h"
#include "simulator/picture.h"
#include "simulator/scenario.h"

namespace simulator {

struct Camera {
    PictureKind picture;
    int64_t ScannerPlan::*width;  // at the resolution of the plan
    int64_t ScannerPlan::*height;
    uint32_t mask;      // how commands name it
    uint32_t scanType;  // of its references
};

inline constexpr size_t kFingerCamera = 0;
inline constexpr size_t kSlapCamera = 1;
inline constexpr size_t kPalmCamera = 2;
inline constexpr size_t kHandCamera = 3;

inline constexpr Camera kCameras[kCameraCount] = {
    {PictureKind::Finger, &ScannerPlan::fingerWidth, &ScannerPlan::fingerHeight, 1, 38},
    {PictureKind::Slap, &ScannerPlan::slapWidth, &ScannerPlan::slapHeight, 2, 39},
    {PictureKind::Palm, &ScannerPlan::palmWidth, &ScannerPlan::palmHeight, 4, 41},
    {PictureKind::Hand, &ScannerPlan::handWidth, &ScannerPlan::handHeight, 8, 40},
};

// The camera of a mask with one bit set, nothing for any other.
constexpr std::optional<size_t> cameraOf(uint32_t mask) {
    for (size_t i = 0; i < kCameraCount; ++i) {
        if (kCameras[i].mask == mask) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace simulator
