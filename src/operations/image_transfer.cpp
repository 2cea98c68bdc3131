#include "operations/image_transfer.h"

#include <cinttypes>
#include <cstring>
#include <optional>
#include <string>

#include "console/console_state.h"
#include "console/output.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/block_transfer.h"
#include "link/command_channel.h"
#include "link/link_state.h"
#include "link/report.h"
#include "link/status_check.h"
#include "operations/byte_buffer.h"
#include "operations/tiff_image.h"
#include "operations/transfer_steps.h"

namespace operations {
namespace {

using console::output;

constexpr uint32_t kCommandMs = 30000;
constexpr uint32_t kConfirmationMs = 10000;
constexpr uint32_t kTransferDone = 5;
constexpr uint32_t kLastTagMisplaced = 9100;
constexpr uint32_t kReadBackDiffers = 9000;
constexpr size_t kInfoOffset = scannerlink::kBodyOffset;

// Failed calls in a row that moved nothing, after which no more is to be had of an image.
constexpr int kMostIdleCalls = 3;

// The TIFF library counts bytes in 31 bits: a larger image could be fetched, yet not be written.
constexpr uint64_t kMostImageBytes = INT32_MAX;

struct ImageKey {
    uint32_t handle;
    uint32_t scanType;
    uint32_t imageType;

    bool operator==(const ImageKey&) const = default;
};

// What the loop test calls its image.
constexpr ImageKey kLoopTestImage{.handle = 1001, .scanType = 1, .imageType = 1};

// Both image commands are sent as 64 bytes, zeros behind the payload, whatever their size field says.
struct SendImageCommand {
    scannerlink::CommandHeader header;
    ImageKey key;
    uint32_t byteCount;
    uint8_t unused[36];
};
static_assert(sizeof(SendImageCommand) == 64);

struct RecvImageCommand {
    scannerlink::CommandHeader header;
    ImageKey key;
    uint32_t height;
    uint32_t width;
    uint32_t pitch;
    uint32_t verticalResolution;
    uint32_t horizontalResolution;
    uint32_t byteCount;
    uint8_t unused[16];
};
static_assert(sizeof(RecvImageCommand) == 64);

// The body of an image information report.
struct ImageInfo {
    ImageKey key;
    uint32_t height;
    uint32_t width;
    uint32_t pitch;
    uint32_t depth;
    uint32_t verticalResolution;
    uint32_t horizontalResolution;

    uint64_t byteCount() const { return uint64_t{height} * width; }
};
static_assert(sizeof(ImageInfo) == 36);

SendImageCommand beginSend() {
    SendImageCommand command{};
    command.header = scannerlink::nextCommand(hoxi::CMD_SEND_IMAGE, 16);
    return command;
}

RecvImageCommand beginRecv() {
    RecvImageCommand command{};
    command.header = scannerlink::nextCommand(hoxi::CMD_RECV_IMAGE, 36);
    return command;
}

// The line of both operations: a file and the image's three numbers. None when a word is missing.
struct FileAndKey {
    std::string file;
    ImageKey key;
};
std::optional<FileAndKey> readFileAndKey() {
    const char* file = console::nextArgument(console::kMandatory);
    if (file == nullptr)
        return std::nullopt;
    uint32_t numbers[3];
    if (!console::nextNumbers(numbers))
        return std::nullopt;
    return FileAndKey{file, {numbers[0], numbers[1], numbers[2]}};
}

bool commandCompleted(uint32_t tag, const char* otherwise) {
    return completed(tag, kCommandMs, otherwise);
}

bool imageConfirmed(uint32_t tag, uint32_t value, const char* otherwise) {
    return confirmed(hoxi::STA_IMAGE_XFER, value, tag, kConfirmationMs, otherwise);
}

bool allocated(const ByteBuffer& buffer) {
    if (buffer.empty())
        output("TamTest: image buffer allocation failed\n");
    return !buffer.empty();
}

// The last image information that the scanner reported, if it is of this image.
std::optional<ImageInfo> matchingInfo(const ImageKey& key) {
    const auto report = scannerlink::heldReport(scannerlink::state.currentScanner, hoxi::STA_IMAGE_INFO);
    if (!report) {
        output("TamTest: no STA_IMAGE_INFO available, can't send_image\n");
        return std::nullopt;
    }
    const auto info = scannerlink::reportField<ImageInfo>(*report, kInfoOffset);
    if (info.key == key)
        return info;
    output("TamTest: STA_IMAGE_INFO doesn't match, can't send_image\n");
    return std::nullopt;
}

void flagGetFailure(HoxiResult result) {
    console::flagError(result);
    output("TamTest: failed in HoxiGetImage - %" PRId32 "\n", static_cast<int32_t>(result));
}

// Says whether the last block came where the image ends.
void checkEnd(const scannerlink::Moved& received, size_t byteCount) {
    if (received.lastBlock && received.moved < byteCount)
        output("TamTest: got last xfer tag before image end\n");
    else if (!received.lastBlock && received.moved == byteCount)
        output("TamTest: no last xfer tag, but image completely rcvd\n");
    else
        return;
    console::flagError(kLastTagMisplaced);
}

// False when a call failed; a last block at the wrong place leaves the image as far as it came.
bool receiveImage(std::span<uint8_t> image) {
    const scannerlink::Moved received = scannerlink::getBlocks(HoxiGetImage, image);
    if (received.result != 0) {
        flagGetFailure(received.result);
        return false;
    }
    checkEnd(received, image.size());
    return true;
}

// As receiveImage, but a failed call is only noted and the image goes on behind what it moved.
void receiveImageStubbornly(std::span<uint8_t> image) {
    size_t done = 0;
    int idleCalls = 0;
    scannerlink::Moved received;
    do {
        received = scannerlink::getBlocks(HoxiGetImage, image.subspan(done));
        done += received.moved;
        idleCalls = received.moved > 0 ? 0 : idleCalls + 1;
        if (received.result != 0)
            flagGetFailure(received.result);
    } while (received.result != 0 && idleCalls < kMostIdleCalls && !received.lastBlock && done < image.size());
    if (received.result == 0 || received.lastBlock || done == image.size())
        checkEnd({received.result, done, received.lastBlock}, image.size());
}

bool putImage(std::span<const uint8_t> image) {
    const HoxiResult result = scannerlink::putBlocks(HoxiPutImage, image);
    if (result == 0)
        return true;
    console::flagError(result);
    output("TamTest: failed in HoxiPutImage - %" PRId32 "\n", static_cast<int32_t>(result));
    return false;
}

void writeImage(const std::string& file, std::span<const uint8_t> image, TiffFileInfo record) {
    record.first = 1;
    record.second = 0;
    tiffDone(writeTiffFile(file.c_str(), image.data(), &record));
}

TiffFileInfo recordOf(const ImageInfo& info) {
    return {.depth = info.depth,
            .width = info.width,
            .height = info.height,
            .h_res = static_cast<uint16_t>(info.horizontalResolution),
            .v_res = static_cast<uint16_t>(info.verticalResolution),
            .first = 1,
            .second = 0};
}

void describeImage(RecvImageCommand& command, const ImageKey& key, const TiffImageInfo& info) {
    command.key = key;
    command.height = info.record.height;
    command.width = info.record.width;
    command.pitch = info.record.width;
    command.verticalResolution = info.record.v_res;
    command.horizontalResolution = info.record.h_res;
    command.byteCount = info.byteCount;
}

bool giveImage(const RecvImageCommand& command, std::span<const uint8_t> image) {
    return scannerlink::sendCommand(&command, sizeof command) &&
           commandCompleted(command.header.tag, "TamTest: didn't get rcv_image cmd complete status\n") &&
           putImage(image);
}

// One pass of the loop test; false ends it.
bool readBackAndCompare(const std::string& outFile, const TiffImageInfo& info, std::span<const uint8_t> original,
                        std::span<uint8_t> copy, uint32_t goodPasses) {
    SendImageCommand command = beginSend();
    command.key = kLoopTestImage;
    command.byteCount = info.byteCount;
    if (!scannerlink::sendCommand(&command, sizeof command) ||
        !commandCompleted(command.header.tag, "TamTest: didn't get send_image cmd complete status\n"))
        return false;
    receiveImageStubbornly(copy);
    if (!console::errorFlagged()) {
        if (std::memcmp(original.data(), copy.data(), copy.size()) == 0)
            return true;
        output("TamTest: read back image differs from original, %" PRIu32 " loops\n", goodPasses);
        console::flagError(kReadBackDiffers);
    }
    writeImage(outFile, copy, info.record);
    return false;
}

}  // namespace

void sendImage() {
    SendImageCommand command = beginSend();
    const auto line = readFileAndKey();
    if (!line)
        return;
    console::nextArgument(console::kOptional);
    command.key = line->key;
    const auto info = matchingInfo(command.key);
    if (!info)
        return;
    ByteBuffer image(info->byteCount() <= kMostImageBytes ? info->byteCount() : 0);
    if (!allocated(image))
        return;
    command.byteCount = static_cast<uint32_t>(info->byteCount());
    if (!scannerlink::sendCommand(&command, sizeof command) ||
        !commandCompleted(command.header.tag, "TamTest: didn't get send_image cmd complete status\n") ||
        !imageConfirmed(command.header.tag, kTransferReady, "TamTest: didn't get xfer ready confirmation\n"))
        return;
    scannerlink::discardReport(hoxi::STA_IMAGE_XFER);
    if (!receiveImage(image.bytes()))
        return;
    writeImage(line->file, image.bytes(), recordOf(*info));
    imageConfirmed(command.header.tag, kTransferDone, "TamTest: didn't get xfer done confirmation\n");
}

void recvImage() {
    RecvImageCommand command = beginRecv();
    const auto line = readFileAndKey();
    if (!line)
        return;
    const auto info = readTiffInfo(line->file);
    if (!info)
        return;
    describeImage(command, line->key, *info);
    ByteBuffer image(info->byteCount);
    if (readTiffPixels(line->file, image))
        giveImage(command, image.bytes());
}

void sendImageLoopTest() {
    const char* words[3];
    for (const char*& word : words)
        if ((word = console::nextArgument(console::kMandatory)) == nullptr)
            return;
    console::nextArgument(console::kOptional);
    const std::string outFile = words[1];
    const uint32_t loops = console::toUnsigned(words[2]);
    const auto info = readTiffInfo(words[0]);
    if (!info)
        return;
    RecvImageCommand command = beginRecv();
    describeImage(command, kLoopTestImage, *info);
    ByteBuffer original(info->byteCount);
    ByteBuffer copy(info->byteCount);
    if (!allocated(copy) || !readTiffPixels(words[0], original) || !giveImage(command, original.bytes()))
        return;
    uint32_t goodPasses = 0;
    while (readBackAndCompare(outFile, *info, original.bytes(), copy.bytes(), goodPasses))
        if (++goodPasses >= loops)
            return;
}

}  // namespace operations
