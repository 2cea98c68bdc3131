// A text looked for from where the last one found ended.
#pragma once

#include <string_view>

namespace support {

class Finder {
public:
    bool find(std::string_view output, std::string_view text) {
        const size_t found = output.find(text, position_);
        if (found == std::string_view::npos) {
            return false;
        }
        position_ = found + text.size();
        return true;
    }

private:
    size_t position_ = 0;
};

}  // namespace support
