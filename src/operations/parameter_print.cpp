#include "operations/parameter_print.h"

#include <algorithm>
#include <cinttypes>
#include <string>

#include "console/output.h"
#include "operations/parameter_table.h"

namespace operations {
namespace {

using console::output;

constexpr size_t kItemsInRow = 8;
constexpr size_t kTripletRow = 3;

// The text of a field that begins at an item, up to its zero or the field's end.
std::string fieldText(std::span<const uint32_t> items, size_t item, size_t bytes) {
    const char* begin = reinterpret_cast<const char*>(items.data() + item);
    return {begin, std::find(begin, begin + bytes, '\0')};
}

// A character of value 0 prints nothing, and ends nothing.
std::string printable(std::string text) {
    std::erase(text, '\0');
    return text;
}

// The texts as far as the items hold them; returns the item behind the last one.
size_t printIdentityTexts(std::span<const uint32_t> items) {
    static constexpr const char* kFormats[] = {"\n%s ", "%s ", "%s\n"};
    size_t item = 0;
    for (size_t text = 0; text < std::size(kFormats); ++text) {
        const size_t next = item + kIdentityFields[text] / sizeof(uint32_t);
        if (items.size() < next)
            break;
        output(kFormats[text], fieldText(items, item, kIdentityFields[text]).c_str());
        item = next;
    }
    return item;
}

size_t printItems(std::span<const uint32_t> items, size_t first, const NumberFormat& format) {
    const size_t end = std::min(items.size(), kMostItemsShown);
    for (size_t item = first; item < end; ++item)
        output("%s%s", item % kItemsInRow == 0 ? "\n" : " ", printable(format.format(items[item])).c_str());
    return std::max(first, end);
}

size_t printTriplets(std::span<const uint32_t> items) {
    output("\n%" PRId32, static_cast<int32_t>(items[0]));
    for (size_t item = 1; item < items.size(); ++item)
        output("%s%" PRId32 " ", item % kTripletRow == 1 ? "\n" : "", static_cast<int32_t>(items[item]));
    return items.size();
}

}  // namespace

void printParameters(uint32_t set, std::span<const uint32_t> items, const NumberFormat& format) {
    if (items.empty())
        return;
    size_t shown = 0;
    if (set == kTripletSet)
        shown = printTriplets(items);
    else
        shown = printItems(items, set == kIdentitySet ? printIdentityTexts(items) : 0, format);
    output("\n");
    if (shown < items.size())
        output(">>> remaining %d items skipped\n", static_cast<int>(items.size() - shown));
}

}  // namespace operations
