// Every key that a scenario file may hold, as tables: name, what it fills, what it may be. Reader, manual and checks go
// by these tables; a new key is one row. Pure data.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "simulator/scenario.h"

namespace simulator {

struct Range {
    int64_t least = 0;
    int64_t most = 0;
};

// A number that the scenario gives by name.
struct Choice {
    std::string_view name;
    int64_t value;
};

template <typename Record>
struct Key {
    std::string_view name;
    std::variant<int64_t Record::*, bool Record::*, std::string Record::*, std::vector<int64_t> Record::*> field;
    Range range;           // of a number or of each number of a list; of a text's length in bytes
    size_t mostCount = 0;  // of a list's numbers
    bool required = false;
    std::span<const Choice> choices = {};
};

template <typename Record>
struct Section {
    std::string_view name;
    std::span<const Key<Record>> keys;
};

template <typename Record>
Section<Record> sectionOf();
template <>
Section<LibraryPlan> sectionOf();
template <>
Section<ScannerPlan> sectionOf();
template <>
Section<CallFault> sectionOf();
template <>
Section<AnswerFault> sectionOf();
template <>
Section<TransferFault> sectionOf();
template <>
Section<Unplug> sectionOf();
template <>
Section<UnaskedReport> sectionOf();

// One key in words, as the manual has it.
struct KeyText {
    std::string section;
    std::string name;
    std::string type;
    std::string range;
    std::string start;
};

std::vector<KeyText> describeKeys();

}  // namespace simulator
