// The capture under way, of which a scanner has one at most: it goes its steps by the clock, beside other commands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "simulator/image_store.h"
#include "simulator/outbox.h"

namespace simulator {

struct Device;

// Where a capture stands, as its progress reports say it. The number of the complete capture is every program's; the
// others are this scanner's own.
enum ProgressCode : uint32_t {
    kNoCapture = 0,
    kCaptureStarted = 1,
    kAwaitingContact = 2,
    kContact = 3,
    kScanning = 4,
    kAcquired = 10,
    kProcessing = 11,
    kCaptureComplete = 13,
    kCaptureAborted = 14,
    kCaptureFailed = 15,  // there is no room for the image
};

// Abort gives the capture up, scan is as if the person touched the platen now, save takes what there is.
enum class CaptureKey : uint32_t { Abort, Scan, Save };

// What a capture is for: an image for the program, a reference that the scanner keeps for itself, or the state of the
// platen.
enum class CapturePurpose { Picture, Reference, Check };

struct CaptureOrder {
    uint32_t tag = 0;
    ImageKey key;
    Image image;
    CapturePurpose purpose = CapturePurpose::Picture;
    size_t camera = 0;           // of a reference
    bool isDark = false;         // likewise
    uint32_t qualityStatus = 0;  // of a check
    uint64_t contactMs = 0;
    uint64_t captureMs = 0;
};

class CaptureDesk {
public:
    struct Standing {
        uint32_t tag = 0;
        uint32_t handle = 0;
        uint32_t scanType = 0;
        uint32_t progress = kNoCapture;
    };

    bool isBusy() const { return current_.has_value(); }
    // Whether the capture under way is for this image.
    bool isBusyWith(uint32_t handle, uint32_t scanType) const;
    // The capture under way, or the last one.
    const Standing& standing() const { return standing_; }

    // Begins at a time; the reply is that of its command. Only when not busy.
    void begin(CaptureOrder order, const Reply& reply, uint64_t startMs);
    // A key at a time. Does nothing when there is no capture.
    void press(CaptureKey key, uint64_t ms, Device& device);
    // When the next step is due, kNever without a capture.
    uint64_t nextMs() const;
    // Goes all steps that are due, and leaves the image in the device at the last.
    void advance(uint64_t nowMs, Device& device);
    // Forgets the capture without a word.
    void clear();

private:
    struct Current {
        CaptureOrder order;
        Reply reply;
        uint64_t startMs;
        uint64_t contactMs;  // when the platen is touched
        uint64_t latestMs;   // when all that remains is due at the latest
        size_t step = 0;
    };

    uint64_t dueMs(size_t step) const;
    void report(uint32_t progress, uint64_t ms, Device& device);
    void finish(uint64_t ms, Device& device);
    void end(uint32_t progress, int32_t state, uint64_t ms, Device& device);

    std::optional<Current> current_;
    Standing standing_;
};

}  // namespace simulator
