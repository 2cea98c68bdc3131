#include "simulator/parameter_store.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "simulator/noise.h"

namespace simulator {

namespace {

constexpr uint32_t kDescription = 0;
constexpr uint32_t kCameras = 63;

struct SetsOfLength {
    size_t bytes;
    std::initializer_list<uint8_t> sets;
};

constexpr SetsOfLength kLengths[] = {
    {4, {13, 20, 31, 33, 56, 62, 86, 87}},
    {8, {1, 8, 10, 22, 29, 46, 47, 54, 81}},
    {12, {14, 39, 40, 53, 58, 71, 72, 73, 77, 88, 90}},
    {16, {4, 11, 15, 21, 25, 32, 34, 36, 37, 38, 50, 57, 60, 64, 76, 79, 84, 98, 100, 101, 103}},
    {20, {5, 26, 41, 42, 45, 61, 85, 92, 93, 94}},
    {24, {7, 28}},
    {28, {12, 43, 65, 105}},
    {32, {74}},
    {36, {16, 17, 18, 51}},
    {40, {2, 23, 48, 59, 63, 66, 67, 68, 69, 70, 80, 82, 89, 91, 95, 96, 97}},
    {48, {35}},
    {56, {0}},
    {76, {78}},
    {124, {75}},
    {148, {49}},
    {256, {9, 19, 30, 55}},
    {788, {3, 24, 83, 99, 102, 104}},
    {131072, {6, 27, 52}},
};

// Exposure, gain of channels a and b, offset of channels a and b: for the cropped image, then for the full one.
constexpr uint32_t kCameraDefaults[] = {1200, 8, 8, 32, 32, 1000, 8, 8, 32, 32};

void addWord(ParameterStore::Values& values, uint64_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
        values.push_back(static_cast<uint8_t>(word >> shift));
    }
}

// Zero-terminated and filled up with zeros; what is too long is cut.
void addText(ParameterStore::Values& values, std::string_view text, size_t width) {
    const std::string_view kept = text.substr(0, width - 1);
    values.insert(values.end(), kept.begin(), kept.end());
    values.resize(values.size() + width - kept.size());
}

ParameterStore::Values describe(const ScannerPlan& plan) {
    ParameterStore::Values values;
    addText(values, plan.make, 8);
    addText(values, plan.model, 16);
    addText(values, plan.serial, 16);
    for (const int64_t number : {plan.year, plan.month, plan.day, plan.resolution}) {
        addWord(values, static_cast<uint64_t>(number));
    }
    return values;
}

}  // namespace

ParameterStore::ParameterStore(const ScannerPlan& plan)
    : description_(describe(plan)), seed_(mixBits(static_cast<uint64_t>(plan.seed))) {}

size_t ParameterStore::length(uint32_t set) {
    for (const SetsOfLength& row : kLengths) {
        if (std::find(row.sets.begin(), row.sets.end(), set) != row.sets.end()) {
            return row.bytes;
        }
    }
    return 0;
}

ParameterStore::Values ParameterStore::valuesIn(const std::map<uint32_t, Values>& values, uint32_t set) const {
    const auto found = values.find(set);
    return found == values.end() ? defaults(set) : found->second;
}

ParameterStore::Values ParameterStore::defaults(uint32_t set) const {
    constexpr uint64_t kMostOfDefault = 100;
    if (set == kDescription) {
        return description_;
    }
    Values values;
    values.reserve(length(set));
    for (size_t i = 0; i < length(set) / 4; ++i) {
        const uint64_t drawn = mixBits(mixBits(seed_ + set) + i) % kMostOfDefault;
        addWord(values, set == kCameras ? kCameraDefaults[i] : drawn);
    }
    return values;
}

}  // namespace simulator
