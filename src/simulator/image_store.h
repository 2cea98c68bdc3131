// The images that a scanner holds, by handle, scan type and image type, within the memory that it has for them. Pure.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "simulator/picture.h"

namespace simulator {

// The numbers are the program's own, but for these image types.
inline constexpr uint32_t kCapturedImage = 1;
inline constexpr uint32_t kEqualImage = 11;
inline constexpr uint32_t kDarkImage = 29;

struct ImageKey {
    uint32_t handle = 0;
    uint32_t scanType = 0;
    uint32_t imageType = 0;

    auto operator<=>(const ImageKey&) const = default;
};

// Sizes in pixels, pitch in bytes from line to line, depth in bits, resolutions in pixels per inch.
struct ImageInfo {
    uint32_t height = 0;
    uint32_t width = 0;
    uint32_t pitch = 0;
    uint32_t depth = 8;
    uint32_t vRes = 0;
    uint32_t hRes = 0;

    uint64_t byteCount() const { return uint64_t{height} * pitch; }
};

// An image is drawn when its pixels are first asked for: most of them never are.
struct Image {
    ImageInfo info;
    std::vector<uint8_t> pixels;  // as many as info says, once there
    std::optional<Scene> scene;   // what they are drawn from
    uint32_t tag = 0;             // of the command that made it
    uint32_t tookMs = 0;          // from contact to end of its capture
};

class ImageStore {
public:
    // More images than this are refused even when they are empty.
    static constexpr size_t kMostImages = 256;

    explicit ImageStore(uint64_t memory) : memory_(memory) {}

    // Whether an image of this size could be held under the key, in place of the one that is there.
    bool hasRoom(const ImageKey& key, uint64_t byteCount) const;
    // Whether an image of this size could be held if it were the only one.
    bool isPossible(uint64_t byteCount) const { return byteCount > 0 && byteCount <= memory_; }
    // Holds the image in place of the one that is there. An image that is not possible is held without pixels: then
    // there is its description and nothing to fetch. False when there is no room.
    bool put(const ImageKey& key, Image image);
    const Image* find(const ImageKey& key) const;
    // The pixels of the image, none when there is no such image or it is held without them.
    std::span<const uint8_t> pixels(const ImageKey& key);
    bool erase(const ImageKey& key);
    void clear();
    uint64_t usedMemory() const { return used_; }

private:
    uint64_t heldBytes(const ImageKey& key) const;

    uint64_t memory_;
    uint64_t used_ = 0;
    std::map<ImageKey, Image> images_;
};

}  // namespace simulator
