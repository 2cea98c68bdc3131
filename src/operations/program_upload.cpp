#include "operations/program_upload.h"

#include <algorithm>

#include "console/output.h"
#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/block_transfer.h"
#include "operations/transfer_steps.h"
#include "operations/upload_buffer.h"
#include "operations/value_file.h"

namespace operations {
namespace {

using console::output;

constexpr uint32_t kReadyMs = 180000;
constexpr uint32_t kRecordedMs = 360000;
constexpr size_t kLeastWords = 2;
constexpr size_t kWord = sizeof(uint32_t);

struct UploadCommand {
    scannerlink::CommandHeader header;  // its size stays 0 beside the payload: so the scanners expect it
    uint32_t byteCount;
};
static_assert(sizeof(UploadCommand) == 16);

size_t wordCount(size_t bytes) {
    return (bytes + kWord - 1) / kWord;
}

// What the buffer held before must not reach the scanner behind the last byte.
void clearPadding(size_t size) {
    const auto buffer = uploadBuffer();
    std::fill(buffer.begin() + size, buffer.begin() + wordCount(size) * kWord, 0);
}

}  // namespace

bool uploadBufferedProgram(const scannerlink::CommandHeader& header, size_t size) {
    clearPadding(size);
    const size_t byteCount = wordCount(size) * kWord;
    const UploadCommand command{header, static_cast<uint32_t>(byteCount)};
    if (!scannerlink::sendCommand(&command, sizeof command))
        return false;
    if (!confirmed(hoxi::STA_MEMORY_XFER, kTransferReady, header.tag, kReadyMs,
                   "TamTest: didn't get recv_progCoff confirmation status\n"))
        return false;
    const HoxiResult result = scannerlink::putBlocks(HoxiPutMemory, uploadBuffer().first(byteCount));
    if (!transferred(result, "TamTest: failed in HoxiPutMemmory\n") ||
        !completed(header.tag, kRecordedMs, "TamTest: didn't get recv_progCoff cmd complete status\n"))
        return false;
    console::consolePrint(" UPGRADE SUCCESSFULLY LOADED\n");
    return true;
}

void uploadProgramFile(const scannerlink::CommandHeader& command, const char* name) {
    const size_t size = readValueBytes(name, uploadBuffer());
    if (wordCount(size) < kLeastWords)
        output("TamTest: failed reading coff/program data from %s\n", name);
    else
        uploadBufferedProgram(command, size);
}

}  // namespace operations
