// Draws the ridges of skin that touches a platen: dark lines on a bright ground, as a scanner sees them. Pure.
//
// The ridges grow out of noise by filtering it again and again along a field of directions, so that they join, fork and
// end as those of skin do. The same patch gives the same picture.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace simulator {

// A place in pixels, from the upper left corner.
struct Point {
    float x = 0;
    float y = 0;
};

// 8-bit gray, line after line, without gaps.
struct GrayView {
    uint32_t width = 0;
    uint32_t height = 0;
    std::span<uint8_t> pixels;
};

inline constexpr uint8_t kBlankLevel = 246;  // what the sensor sees where nothing touches

// How the ridges run. Around a core they turn back, at a delta three flows meet; without either they run along the
// angle, bulging upwards as much as the arch says.
struct RidgeFlow {
    std::vector<Point> cores;
    std::vector<Point> deltas;
    float angle = 0;  // radians, anticlockwise from level
    float arch = 0;   // steepest slope of the bulge
};

// A fold that leaves a bright line: from one end to the other, pulled towards the bend.
struct Crease {
    Point from;
    Point bend;
    Point to;
    float width = 0;
};

// One area that touches: an ellipse, turned by the tilt.
struct RidgePatch {
    Point centre;
    float halfWidth = 0;
    float halfHeight = 0;
    float tilt = 0;    // radians, clockwise
    float period = 9;  // pixels from one ridge to the next
    RidgeFlow flow;    // in pixels of the picture
    std::vector<Crease> creases;
    uint64_t seed = 0;
};

// Fills the picture with what the sensor sees where nothing touches.
void drawBlank(GrayView picture, uint64_t seed);

// Darkens the picture where the patch touches; what lies outside of the picture is left out. A patch with a period
// below two pixels or without an extent leaves the picture as it is.
void drawRidges(GrayView picture, const RidgePatch& patch);

}  // namespace simulator
