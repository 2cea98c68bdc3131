// A format for one number, as an operator types it. Pure.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace operations {

class NumberFormat {
public:
    // Accepts text with at most one conversion of an integer (d i u x X o c), with flags, a width and a precision of
    // up to three digits each, and an l that makes no difference, and "%%". None for anything else: it would read what
    // is not there.
    static std::optional<NumberFormat> parse(std::string_view text);

    // The number in this format.
    std::string format(uint32_t number) const;

private:
    std::string format_;
};

}  // namespace operations
