// Repeatable randomness: the same seed gives the same numbers on every system. Pure.
#pragma once

#include <cstdint>

namespace simulator {

// Spreads the bits of a value over all 64.
constexpr uint64_t mixBits(uint64_t value) {
    value += 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

// A number of 0 to below 1 for a place in a plane.
float noiseAt(uint64_t seed, int32_t x, int32_t y);
// The same without steps: it runs smoothly from one whole place to the next.
float smoothNoiseAt(uint64_t seed, float x, float y);

// A sequence of numbers.
class Random {
public:
    explicit Random(uint64_t seed) : state_(mixBits(seed)) {}
    uint64_t next() { return mixBits(state_ += 0x632BE59BD9B4E019); }
    // Of least to below most.
    float within(float least, float most);

private:
    uint64_t state_;
};

}  // namespace simulator
