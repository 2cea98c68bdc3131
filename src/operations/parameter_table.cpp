#include "operations/parameter_table.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace operations {
namespace {

struct SetsOfLength {
    uint32_t bytes;
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

}  // namespace

uint32_t parameterSetLength(uint32_t set) {
    for (const SetsOfLength& row : kLengths)
        if (std::find(row.sets.begin(), row.sets.end(), set) != row.sets.end())
            return row.bytes;
    return 0;
}

void putFieldText(std::span<uint32_t> field, std::string_view text) {
    std::fill(field.begin(), field.end(), 0);
    std::memcpy(field.data(), text.data(), std::min(text.size(), field.size_bytes() - 1));
}

}  // namespace operations
