#include "operations/parameter_sets.h"

#include <algorithm>
#include <string>

#include "console/output.h"
#include "console/question.h"
#include "console/text.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/block_transfer.h"
#include "link/command_channel.h"
#include "operations/number_format.h"
#include "operations/parameter_print.h"
#include "operations/parameter_table.h"
#include "operations/parameter_values.h"
#include "operations/transfer_steps.h"
#include "operations/upload_buffer.h"
#include "operations/value_file.h"

namespace operations {
namespace {

using console::output;
using scannerlink::sendCommand;

constexpr uint32_t kWaitMs = 30000;
constexpr char kDefaultFormat[] = "%d";
constexpr char kCameraSetName[] = "63";

struct ParameterCommand {
    scannerlink::CommandHeader header;
    uint32_t set;
    uint32_t byteLength;
};
static_assert(sizeof(ParameterCommand) == 20);

ParameterCommand beginCommand(uint32_t code) {
    return {scannerlink::nextCommand(code, 8), 0, 0};
}

// The set's length, after a message when there is no such set.
uint32_t lookUpLength(uint32_t set) {
    const uint32_t length = parameterSetLength(set);
    if (length == 0)
        output("TamTest: invalid parameter set\n");
    return length;
}

// The values of the line behind its set number. Returns the words read, the set number included.
size_t readTypedValues(const char* set) {
    ParameterValues values(uploadWords(), LongText::refuse);
    values.add(set);
    const char* word = console::nextArgument(console::kMandatory);
    while (word != nullptr && values.add(word))
        word = console::nextArgument(console::kOptional);
    return values.count();
}

size_t readTextFile(const std::string& name) {
    ParameterValues values(uploadWords(), LongText::cut);
    readValueWords(name, [&](const char* word) { return values.add(word); });
    return values.count();
}

size_t readValueFile(const std::string& name) {
    const bool text = valueForm(name) == ValueForm::text;
    const size_t count = text ? readTextFile(name) : readValueBytes(name, uploadBuffer()) / sizeof(uint32_t);
    if (count >= 2)
        return count;
    output("TamTest: failed reading parameters from %s\n", name.c_str());
    return 0;
}

size_t readValues(const char* argument) {
    return console::isNumber(argument) ? readTypedValues(argument) : readValueFile(argument);
}

bool ready(const ParameterCommand& command, const char* otherwise) {
    return confirmed(hoxi::STA_MEMORY_XFER, kTransferReady, command.header.tag, kWaitMs, otherwise);
}

// Gives the scanner the first words of the buffer: a set number and its values.
void sendValues(ParameterCommand command, size_t words) {
    command.set = uploadWords()[0];
    command.byteLength = static_cast<uint32_t>((words - 1) * sizeof(uint32_t));
    if (!sendCommand(&command, sizeof command))
        return;
    if (!ready(command, "TamTest: didn't get set_parm confirmation status\n"))
        return;
    const auto values = uploadBuffer().subspan(sizeof(uint32_t), command.byteLength);
    if (transferred(scannerlink::putBlocks(HoxiPutMemory, values), "TamTest: failed in HoxiPutMemmory\n"))
        completed(command.header.tag, kWaitMs, "TamTest: didn't get set_parm cmd complete status\n");
}

void setFrom(const ParameterCommand& command, const char* argument) {
    const size_t words = readValues(argument);
    if (words == 0)
        return;
    const uint32_t length = lookUpLength(uploadWords()[0]);
    if (length != 0 && (words - 1) * sizeof(uint32_t) != length) {
        output("TamTest: invalid number of parameters\n");
        return;
    }
    // A set that is not known is sent all the same: the scanner may know better.
    if (words >= 2)
        sendValues(command, words);
}

void getInto(ParameterCommand command, uint32_t set, const NumberFormat& format) {
    command.set = set;
    command.byteLength = lookUpLength(set);
    if (command.byteLength == 0 || !sendCommand(&command, sizeof command))
        return;
    if (!ready(command, "TamTest: didn't get get_parm confirmation status\n"))
        return;
    const auto values = uploadBuffer().first(command.byteLength);
    std::fill(values.begin(), values.end(), 0);
    const HoxiResult result = scannerlink::getBlocks(HoxiGetMemory, values).result;
    if (!transferred(result, "TamTest: failed in HoxiGetMemmory\n"))
        return;
    printParameters(set, uploadWords().first(command.byteLength / sizeof(uint32_t)), format);
    completed(command.header.tag, kWaitMs, "TamTest: didn't get get_parm cmd complete status\n");
}

void getTyped(uint32_t code) {
    const ParameterCommand command = beginCommand(code);
    const char* set = console::nextArgument(console::kMandatory);
    if (set == nullptr)
        return;
    const char* word = console::nextArgument(console::kOptional);
    const char* text = word != nullptr ? word : kDefaultFormat;
    if (const auto format = NumberFormat::parse(text))
        getInto(command, console::toUnsigned(set), *format);
    else
        output("TamTest: invalid format - %s\n", text);
}

}  // namespace

void setParameters() {
    const ParameterCommand command = beginCommand(hoxi::CMD_SET_PARAMETERS);
    if (const char* argument = console::nextArgument(console::kMandatory))
        setFrom(command, argument);
}

void setCameraParameters() {
    setFrom(beginCommand(hoxi::CMD_SET_PARAMETERS), kCameraSetName);
}

void getParameters() {
    getTyped(hoxi::CMD_GET_PARAMETERS);
}

void getDefParameters() {
    getTyped(hoxi::CMD_GET_DEF_PARAMETERS);
}

void getCameraParameters() {
    getInto(beginCommand(hoxi::CMD_GET_PARAMETERS), kCameraSet, *NumberFormat::parse(kDefaultFormat));
}

void saveParameters() {
    if (!console::equalIgnoringCase(console::ask("Are you certain you want to overwrite non-volatile storage?  "),
                                    "YES")) {
        console::consolePrint("...Canceled save parameters command.\n");
        return;
    }
    const scannerlink::CommandHeader command = scannerlink::nextCommand(hoxi::CMD_SAVE_PARAMETERS);
    sendCommand(&command, sizeof command);
}

void checkParameters() {
    ParameterCommand command = beginCommand(hoxi::CMD_CHECK_PARAMETERS);
    const char* set = console::nextArgument(console::kMandatory);
    if (set == nullptr)
        return;
    command.set = console::toUnsigned(set);
    command.byteLength = lookUpLength(command.set);
    sendCommand(&command, sizeof command);
}

}  // namespace operations
