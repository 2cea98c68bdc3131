#include "simulator/image_store.h"

#include <utility>

namespace simulator {

bool ImageStore::hasRoom(const ImageKey& key, uint64_t byteCount) const {
    const uint64_t free = memory_ - used_ + heldBytes(key);
    return byteCount <= free && (images_.size() < kMostImages || images_.contains(key));
}

bool ImageStore::put(const ImageKey& key, Image image) {
    const uint64_t byteCount = isPossible(image.info.byteCount()) ? image.info.byteCount() : 0;
    if (!hasRoom(key, byteCount)) {
        return false;
    }
    used_ = used_ - heldBytes(key) + byteCount;
    images_[key] = std::move(image);
    return true;
}

const Image* ImageStore::find(const ImageKey& key) const {
    const auto found = images_.find(key);
    return found == images_.end() ? nullptr : &found->second;
}

std::span<const uint8_t> ImageStore::pixels(const ImageKey& key) {
    const auto found = images_.find(key);
    if (found == images_.end() || heldBytes(key) == 0) {
        return {};
    }
    Image& image = found->second;
    if (image.pixels.empty()) {
        image.pixels.resize(heldBytes(key));
        if (image.scene) {
            drawPicture({image.info.width, image.info.height, image.pixels}, *image.scene);
        }
    }
    return image.pixels;
}

bool ImageStore::erase(const ImageKey& key) {
    used_ -= heldBytes(key);
    return images_.erase(key) > 0;
}

void ImageStore::clear() {
    images_.clear();
    used_ = 0;
}

uint64_t ImageStore::heldBytes(const ImageKey& key) const {
    const Image* const image = find(key);
    return image != nullptr && isPossible(image->info.byteCount()) ? image->info.byteCount() : 0;
}

}  // namespace simulator
