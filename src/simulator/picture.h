// What the scanner's cameras see: a finger, a slap of four fingers, a palm, a hand, or the empty platen. Pure: the same
// scene gives the same picture.
#pragma once

#include <cstdint>

#include "simulator/ridge_pattern.h"

namespace simulator {

enum class PictureKind { Finger, Slap, Palm, Hand, Flat, Dark };

struct Scene {
    PictureKind kind = PictureKind::Finger;
    uint64_t seed = 0;
    uint32_t resolution = 500;  // pixels per inch
};

// Draws all pixels of the picture. It scales with the picture, the ridges with the resolution.
void drawPicture(GrayView picture, const Scene& scene);

}  // namespace simulator
