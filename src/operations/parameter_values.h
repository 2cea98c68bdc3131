// The values of a parameter set as they are typed or stand in a file: word 0 is the set number, its values follow.
// Pure: words in, words out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace operations {

// What to do with a text of the identity set that is longer than its field.
enum class LongText { cut, refuse };

class ParameterValues {
public:
    // words is where the values go and how many there may be; it stays the caller's.
    explicit ParameterValues(std::span<uint32_t> words, LongText longText) : words_(words), longText_(longText) {}

    // Takes the next word of a line or file. False when there is no more room or the text was refused; reading stops
    // there, and what was taken before counts.
    bool add(const char* word);

    // Words taken, the set number included.
    size_t count() const { return count_; }

private:
    bool addText(const char* word);

    std::span<uint32_t> words_;
    LongText longText_;
    size_t count_ = 0;
    size_t texts_ = 0;
};

}  // namespace operations
