#include "simulator/scenario_reader.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include "simulator/scenario_check.h"
#include "simulator/scenario_keys.h"

namespace simulator {

namespace {

// More than any scenario needs, and little enough to be read at once.
constexpr size_t kLargestFile = 262'144;

// Where the reading stands: the first failure is kept, with its line.
struct Reading {
    std::string path;
    std::string error;

    bool fail(const toml::source_region& place, const std::string& reason) {
        if (error.empty()) {
            error = path + ":" + std::to_string(place.begin.line) + ": " + reason;
        }
        return false;
    }
};

// Puts one value into the field of its key.
template <typename Record>
struct Fill {
    Reading& reading;
    const Key<Record>& key;
    const std::string label;
    const toml::node& node;
    Record& record;

    bool operator()(int64_t Record::*field) {
        if (!key.choices.empty()) {
            return choose(record.*field);
        }
        return readNumber(node, record.*field);
    }
    bool operator()(bool Record::*field) {
        const auto value = node.value_exact<bool>();
        record.*field = value.value_or(false);
        return value || fail(node, "must be true or false");
    }
    bool operator()(std::string Record::*field) {
        const auto value = node.value_exact<std::string>();
        if (!value) {
            return fail(node, "must be a text");
        }
        record.*field = *value;
        return static_cast<int64_t>(value->size()) <= key.range.most ||
               fail(node, "is longer than " + std::to_string(key.range.most) + " bytes");
    }
    bool operator()(std::vector<int64_t> Record::*field) {
        const toml::array* const values = node.as_array();
        if (values == nullptr) {
            return fail(node, "must be a list of whole numbers");
        }
        if (values->size() > key.mostCount) {
            return fail(node, "has more than " + std::to_string(key.mostCount) + " numbers");
        }
        return std::all_of(values->begin(), values->end(), [&](const toml::node& element) {
            return readNumber(element, (record.*field).emplace_back());
        });
    }

    bool readNumber(const toml::node& source, int64_t& number) {
        const auto value = source.value_exact<int64_t>();
        if (!value) {
            return fail(source, "must be a whole number");
        }
        number = *value;
        if (number >= key.range.least && number <= key.range.most) {
            return true;
        }
        return fail(source, std::to_string(number) + " is not within " + std::to_string(key.range.least) + " to " +
                                std::to_string(key.range.most));
    }
    bool choose(int64_t& number) {
        const auto name = node.value_exact<std::string>();
        for (const Choice& choice : key.choices) {
            if (name == choice.name) {
                number = choice.value;
                return true;
            }
        }
        return fail(node, name ? "\"" + *name + "\" is not known" : "must be a text");
    }
    bool fail(const toml::node& source, const std::string& reason) {
        return reading.fail(source.source(), label + ": " + reason);
    }
};

template <typename Record>
bool readKeys(Reading& reading, const toml::table& table, Record& record) {
    const Section<Record> section = sectionOf<Record>();
    const std::string prefix = std::string(section.name) + ".";
    for (const auto& [name, node] : table) {
        const auto key = std::find_if(section.keys.begin(), section.keys.end(),
                                      [&](const Key<Record>& row) { return row.name == name.str(); });
        const std::string label = prefix + std::string(name.str());
        if (key == section.keys.end()) {
            return reading.fail(name.source(), label + ": there is no such key");
        }
        if (!std::visit(Fill<Record>{reading, *key, label, node, record}, key->field)) {
            return false;
        }
    }
    for (const Key<Record>& key : section.keys) {
        if (key.required && !table.contains(key.name)) {
            return reading.fail(table.source(), prefix + std::string(key.name) + ": is missing");
        }
    }
    return true;
}

template <typename Record>
bool check(Reading& reading, const toml::table& table, const Scenario& scenario, const Record& record) {
    const std::string reason = checkRecord(scenario, record);
    return reason.empty() || reading.fail(table.source(), std::string(sectionOf<Record>().name) + ": " + reason);
}

// A section that the file has at most once.
template <typename Record>
bool readOne(Reading& reading, const toml::table& file, const Scenario& scenario, Record& record) {
    const std::string name(sectionOf<Record>().name);
    const toml::node* const node = file.get(name);
    if (node == nullptr) {
        return true;
    }
    if (!node->is_table()) {
        return reading.fail(node->source(), name + ": must be a table [" + name + "]");
    }
    return readKeys(reading, *node->as_table(), record) && check(reading, *node->as_table(), scenario, record);
}

// A section that may come any number of times.
template <typename Record>
bool readMany(Reading& reading, const toml::table& file, const Scenario& scenario, std::vector<Record>& records) {
    const std::string name(sectionOf<Record>().name);
    const toml::node* const node = file.get(name);
    if (node == nullptr) {
        return true;
    }
    const toml::array* const tables = node->as_array();
    if (tables == nullptr ||
        !std::all_of(tables->begin(), tables->end(), [](const auto& each) { return each.is_table(); })) {
        return reading.fail(node->source(), name + ": must be a list of tables [[" + name + "]]");
    }
    for (const toml::node& each : *tables) {
        const bool usable = readKeys(reading, *each.as_table(), records.emplace_back());
        if (!usable || !check(reading, *each.as_table(), scenario, records.back())) {
            return false;
        }
    }
    return true;
}

bool checkSections(Reading& reading, const toml::table& file) {
    const std::string_view known[] = {
        sectionOf<LibraryPlan>().name,   sectionOf<ScannerPlan>().name,   sectionOf<CallFault>().name,
        sectionOf<AnswerFault>().name,   sectionOf<TransferFault>().name, sectionOf<Unplug>().name,
        sectionOf<UnaskedReport>().name,
    };
    for (const auto& [name, node] : file) {
        if (std::find(std::begin(known), std::end(known), name.str()) == std::end(known)) {
            return reading.fail(name.source(), std::string(name.str()) + ": there is no such table");
        }
    }
    return true;
}

}  // namespace

bool findScenario(ScenarioText& found, std::string& error) {
    const char* const path = std::getenv("HOXI_SCENARIO");
    found = {};
    if (path == nullptr || *path == '\0') {
        return true;
    }
    found.path = path;
    std::ifstream file(found.path, std::ios::binary);
    found.text.resize(kLargestFile + 1);
    file.read(found.text.data(), static_cast<std::streamsize>(found.text.size()));
    const bool usable = file.is_open() && !file.bad() && (file.eof() || file.gcount() > 0);
    found.text.resize(static_cast<size_t>(file.gcount()));
    if (!usable) {
        error = found.path + ": cannot be read";
        return false;
    }
    if (found.text.size() > kLargestFile) {
        error = found.path + ": is larger than " + std::to_string(kLargestFile) + " bytes";
        return false;
    }
    found.source = found.path + '\n' + found.text;
    return true;
}

bool readScenario(const ScenarioText& text, Scenario& scenario, std::string& error) {
    scenario = {};
    Reading reading{text.path, {}};
    const toml::parse_result parsed = toml::parse(std::string_view(text.text), std::string_view(text.path));
    if (!parsed) {
        reading.fail(parsed.error().source(), std::string(parsed.error().description()));
    } else {
        const toml::table& file = parsed.table();
        // What there is comes before what befalls it, since faults name scanners.
        checkSections(reading, file) && readOne(reading, file, scenario, scenario.library) &&
            readMany(reading, file, scenario, scenario.scanners) &&
            readMany(reading, file, scenario, scenario.callFaults) &&
            readMany(reading, file, scenario, scenario.answerFaults) &&
            readMany(reading, file, scenario, scenario.transferFaults) &&
            readMany(reading, file, scenario, scenario.unplugs) && readMany(reading, file, scenario, scenario.reports);
    }
    error = reading.error;
    return error.empty();
}

}  // namespace simulator
