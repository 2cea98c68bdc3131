#include "operations/upload.h"

#include <string>

#include "console/output.h"
#include "console/tokenizer.h"
#include "link/command_channel.h"
#include "link/link_state.h"
#include "operations/program_upload.h"
#include "operations/transfer_steps.h"
#include "operations/upload_rules.h"

namespace operations {
namespace {

using console::output;
using scannerlink::CommandHeader;

constexpr uint32_t kVersionMs = 30000;
constexpr char kScannerCodeExtension[] = ".ovk";

struct Upload {
    uint32_t code;
    const char* extension;  // null: any file will do
};

constexpr Upload kUploads[] = {
    {hoxi::CMD_RECV_PCIP, ".rbf"},
    {hoxi::CMD_RECV_IPP, ".rbf"},
    {hoxi::CMD_RECV_GRIBB_FW, ".hex"},
    {hoxi::CMD_RECV_GRIBB_FPGA, ".xsvf"},
    {hoxi::CMD_RECV_COLOR_NORM_TABLE, nullptr},
    {hoxi::CMD_RECV_KERNEL, ".knl"},
    {hoxi::CMD_RECV_RAMDISK, ".ram"},
    {hoxi::CMD_RECV_BOOTLOADER, ".ubt"},
    {hoxi::CMD_RECV_JFFS2, ".jfs"},
    {hoxi::CMD_RECV_BAK_KERNEL, ".knl"},
    {hoxi::CMD_RECV_BAK_RAMDISK, ".ram"},
    {hoxi::CMD_RECV_GUI_IMAGES, ".img"},
    {hoxi::CMD_RECV_OLED_DRIVER_BD, ".bin"},
    {hoxi::CMD_RECV_UBL_LOADER, ".ubl"},
};

const char* extensionOf(uint32_t code) {
    for (const Upload& row : kUploads)
        if (row.code == code)
            return row.extension;
    return nullptr;
}

bool extensionSuits(const char* name, const char* extension) {
    if (extension == nullptr || hasExtension(name, extension))
        return true;
    output("TamTest: invalid file extension, must be %s\n", extension);
    return false;
}

// Has the scanner report its version, and with it its model, without a word on the console. The tester stays quiet when
// the scanner does not complete it.
bool refreshModel() {
    scannerlink::state.quiet = 1;
    const CommandHeader command = scannerlink::nextCommand(hoxi::CMD_SEND_VERS);
    if (!scannerlink::sendCommand(&command, sizeof command)) {
        scannerlink::state.quiet = 0;
        return false;
    }
    if (!completed(command.tag, kVersionMs, "TamTest: didn't get CMD_SEND_VERS cmd complete status\n"))
        return false;
    scannerlink::state.quiet = 0;
    return true;
}

bool modelSuits(const char* name) {
    const auto& model = scannerlink::state.models[scannerlink::state.currentScanner];
    const CodeFileRule* broken = brokenCodeFileRule(model.data(), name);
    if (broken == nullptr)
        return true;
    output("TamTest: invalid firmware file for this scanner\n");
    output("%s", broken->form);
    return false;
}

}  // namespace

void uploadFile(uint32_t code) {
    const CommandHeader command = scannerlink::nextCommand(code);
    const char* name = console::nextArgument(console::kMandatory);
    if (name != nullptr && extensionSuits(name, extensionOf(code)))
        uploadProgramFile(command, name);
}

void uploadScannerCode() {
    const char* word = console::nextArgument(console::kMandatory);
    if (word == nullptr)
        return;
    const std::string name = word;
    if (!extensionSuits(name.c_str(), kScannerCodeExtension) || !refreshModel() || !modelSuits(name.c_str()))
        return;
    output(
        "\nThis command may take over 5 minutes to complete,\n"
        "\tplease do not unplug/disconnect the unit.\n\n");
    uploadProgramFile(scannerlink::nextCommand(hoxi::CMD_RECV_COFF), name.c_str());
}

}  // namespace operations
