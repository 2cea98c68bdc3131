#include "operations/upload_rules.h"

#include "console/text.h"

namespace operations {
namespace {

constexpr char kForm1100[] = "TamTest: should be in form MX-1100.dsp.x.xx.ovk\n";
constexpr char kForm1500[] = "TamTest: should be in form MX-1500.dsp.x.xx.ovk\n";
constexpr char kFormTamsel[] = "TamTest: should be in form Tamsel.x.xx.ovk\n";

constexpr CodeFileRule kRules[] = {
    {"MX1100", "MX-1100.DSP", 20, kForm1100}, {"MX1200", "MX-1500.DSP", 20, kForm1500},
    {"MX1300", "MX-1500.DSP", 20, kForm1500}, {"MXRB-2", "Tamsel.", 15, kFormTamsel},
    {"MX1400", "Tamsel.", 15, kFormTamsel},
};

bool keeps(const CodeFileRule& rule, std::string_view name) {
    return name.size() >= rule.tailLength &&
           console::equalIgnoringCase(name.substr(name.size() - rule.tailLength, rule.tailStart.size()),
                                      rule.tailStart);
}

}  // namespace

bool hasExtension(std::string_view name, std::string_view extension) {
    return name.size() > extension.size() &&
           console::equalIgnoringCase(name.substr(name.size() - extension.size()), extension);
}

const CodeFileRule* brokenCodeFileRule(std::string_view model, std::string_view name) {
    for (const CodeFileRule& rule : kRules)
        if (console::equalIgnoringCase(rule.model, model))
            return keeps(rule, name) ? nullptr : &rule;
    return nullptr;
}

}  // namespace operations
