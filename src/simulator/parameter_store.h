// The numbered parameter sets that a scanner keeps its settings in: those in use, those in non-volatile storage, and
// the defaults. Numbers of sets are those that length() knows. Pure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "simulator/scenario.h"

namespace simulator {

class ParameterStore {
public:
    using Values = std::vector<uint8_t>;  // little-endian 32-bit words

    // The scanner that is described keeps its own description in set 0. Starts with the defaults, saved.
    explicit ParameterStore(const ScannerPlan& plan);

    // The set's bytes, 0 when there is no such set.
    static size_t length(uint32_t set);

    Values current(uint32_t set) const { return valuesIn(current_, set); }
    Values defaults(uint32_t set) const;
    // Whether the set differs from its non-volatile copy.
    bool isModified(uint32_t set) const { return current(set) != valuesIn(saved_, set); }
    void set(uint32_t set, Values values) { current_[set] = std::move(values); }
    void save() { saved_ = current_; }
    void restore() { current_ = saved_; }
    void restoreDefaults() { current_.clear(); }

private:
    Values valuesIn(const std::map<uint32_t, Values>& values, uint32_t set) const;

    // Only what differs from the defaults is kept.
    std::map<uint32_t, Values> current_;
    std::map<uint32_t, Values> saved_;
    Values description_;
    uint64_t seed_;
};

}  // namespace simulator
