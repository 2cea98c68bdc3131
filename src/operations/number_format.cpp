#include "operations/number_format.h"

#include <cstdio>

namespace operations {
namespace {

constexpr size_t kDigits = 3;

// A long has 32 bits where the scanners are, as a number has: the modifier says nothing, and is left out.
constexpr char kLong = 'l';

size_t countDigits(std::string_view text, size_t from) {
    const size_t end = text.find_first_not_of("0123456789", from);
    return (end == std::string_view::npos ? text.size() : end) - from;
}

// The length of the conversion at the start of the text, from its per-cent sign on; 0 when it is not one of an integer.
size_t conversionLength(std::string_view text) {
    size_t at = 1;
    at = text.find_first_not_of("-+ #0", at);
    if (at == std::string_view::npos)
        return 0;
    const size_t width = countDigits(text, at);
    at += width;
    size_t precision = 0;
    if (at < text.size() && text[at] == '.') {
        precision = countDigits(text, at + 1);
        at += 1 + precision;
    }
    if (at < text.size() && text[at] == kLong)
        ++at;
    const bool integer = at < text.size() && std::string_view("diuxXoc").find(text[at]) != std::string_view::npos;
    return integer && width <= kDigits && precision <= kDigits ? at + 1 : 0;
}

}  // namespace

std::optional<NumberFormat> NumberFormat::parse(std::string_view text) {
    NumberFormat format;
    int conversions = 0;
    for (size_t at = 0; at < text.size();) {
        size_t length = 1;
        if (text.substr(at, 2) == "%%") {
            length = 2;
        } else if (text[at] == '%') {
            length = conversionLength(text.substr(at));
            if (length == 0 || ++conversions > 1)
                return std::nullopt;
        }
        std::string piece(text.substr(at, length));
        if (length > 2)
            std::erase(piece, kLong);
        format.format_ += piece;
        at += length;
    }
    return format;
}

std::string NumberFormat::format(uint32_t number) const {
    const int length = std::snprintf(nullptr, 0, format_.c_str(), number);
    std::string text(length < 0 ? 0 : length + 1, '\0');
    std::snprintf(text.data(), text.size(), format_.c_str(), number);
    if (!text.empty())
        text.pop_back();
    return text;
}

}  // namespace operations
