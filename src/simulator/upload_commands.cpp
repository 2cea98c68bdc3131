// Commands that take code, programmable logic, file systems and tables into the flash memory. Each has an area of its
// own there, which holds what was uploaded last, whole.
#include <utility>

#include "hoxi/hoxi_codes.h"
#include "simulator/command_rows.h"
#include "simulator/scanner.h"

namespace simulator {

namespace {

constexpr uint64_t kMostBytes = 0x800'0000;

Answer runUpload(const Request& request) {
    PayloadReader payload(request.packet.payload);
    const uint64_t byteCount = payload.u32();
    if (payload.isMissing() || byteCount == 0) {
        return answer(request.packet, kBadParameter);
    }
    if (byteCount > kMostBytes) {
        return answer(request.packet, kNoMemory);
    }
    DataOrder order;
    order.byteCount = static_cast<size_t>(byteCount);
    order.recordMs = static_cast<uint64_t>(request.scanner.plan().recordMs);
    order.keep = [code = request.packet.code](Device& device, std::vector<uint8_t> bytes) {
        device.flash[code] = std::move(bytes);
    };
    return answerWithTransfer(request.packet, std::move(order));
}

constexpr CommandRow kRows[] = {
    {hoxi::CMD_RECV_COFF, runUpload},       {hoxi::CMD_RECV_PCIP, runUpload},
    {hoxi::CMD_RECV_IPP, runUpload},        {hoxi::CMD_RECV_GRIBB_FW, runUpload},
    {hoxi::CMD_RECV_GRIBB_FPGA, runUpload}, {hoxi::CMD_RECV_COLOR_NORM_TABLE, runUpload},
    {hoxi::CMD_RECV_KERNEL, runUpload},     {hoxi::CMD_RECV_RAMDISK, runUpload},
    {hoxi::CMD_RECV_BOOTLOADER, runUpload}, {hoxi::CMD_RECV_JFFS2, runUpload},
    {hoxi::CMD_RECV_BAK_KERNEL, runUpload}, {hoxi::CMD_RECV_BAK_RAMDISK, runUpload},
    {hoxi::CMD_RECV_GUI_IMAGES, runUpload}, {hoxi::CMD_RECV_OLED_DRIVER_BD, runUpload},
    {hoxi::CMD_RECV_UBL_LOADER, runUpload},
};

}  // namespace

std::span<const CommandRow> uploadCommands() {
    return kRows;
}

}  // namespace simulator
