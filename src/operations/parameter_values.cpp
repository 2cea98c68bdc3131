#include "operations/parameter_values.h"

#include <iterator>
#include <string_view>

#include "console/tokenizer.h"
#include "operations/parameter_table.h"

namespace operations {

bool ParameterValues::add(const char* word) {
    if (count_ > 0 && words_[0] == kIdentitySet && texts_ < std::size(kIdentityFields))
        return addText(word);
    if (count_ == words_.size())
        return false;
    words_[count_++] = console::toUnsigned(word);
    return true;
}

bool ParameterValues::addText(const char* word) {
    const std::string_view text = word;
    const size_t field = kIdentityFields[texts_];
    const size_t fieldWords = field / sizeof(uint32_t);
    if (count_ + fieldWords > words_.size() || (longText_ == LongText::refuse && text.size() >= field))
        return false;
    putFieldText(words_.subspan(count_, fieldWords), text);
    count_ += fieldWords;
    ++texts_;
    return true;
}

}  // namespace operations
