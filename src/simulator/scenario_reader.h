// Finds the scenario that the person has chosen and turns its text into data.
#pragma once

#include <string>

#include "simulator/scenario.h"

namespace simulator {

struct ScenarioText {
    std::string path;    // empty: the built-in scanner
    std::string source;  // the path and everything that the file holds, to tell one scenario from another
    std::string text;
};

// Reads the file that the environment variable HOXI_SCENARIO names; without it the text is that of the built-in
// scanner. False with a message when the file cannot be read.
bool findScenario(ScenarioText& found, std::string& error);

// Fills the scenario from the text. False with a message that names file, line and reason, the scenario is then
// undefined: syntax, a key that does not exist, a value of the wrong type or out of range, or values that do not go
// together.
bool readScenario(const ScenarioText& text, Scenario& scenario, std::string& error);

}  // namespace simulator
