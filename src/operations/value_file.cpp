#include "operations/value_file.h"

#include <cstdio>
#include <string_view>

#include "console/regular_file.h"
#include "console/text.h"

namespace operations {
namespace {

constexpr char kTextMark[] = "ASCII";
constexpr char kBitmapMark[] = "BM";
constexpr size_t kLongestWord = 1024;

console::File openFile(const std::string& name) {
    return console::openRegularFile(name, "rb");
}

bool beginsWithTextMark(std::string_view start) {
    return console::equalIgnoringCase(start.substr(0, sizeof kTextMark - 1), kTextMark);
}

// The next byte of a text; EOF at its end. An old mark of the end ends it as well.
int nextByte(std::FILE* file) {
    constexpr int kEndMark = 0x1A;
    const int byte = std::getc(file);
    if (byte != kEndMark)
        return byte;
    std::fseek(file, 0, SEEK_END);
    return EOF;
}

void skipLine(std::FILE* file) {
    for (int byte = nextByte(file); byte != EOF && byte != '\n';)
        byte = nextByte(file);
}

bool separates(int byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

// The next word, empty at the end of the file. Comments are passed over.
std::string nextWord(std::FILE* file) {
    std::string word;
    for (int byte = nextByte(file); byte != EOF; byte = nextByte(file)) {
        if (separates(byte)) {
            if (!word.empty())
                break;
        } else if (byte == ';' && word.empty()) {
            skipLine(file);
        } else if (word.size() < kLongestWord) {
            word += byte == '\0' ? '?' : static_cast<char>(byte);
        }
    }
    return word;
}

}  // namespace

ValueForm valueForm(const std::string& name) {
    const console::File file = openFile(name);
    if (!file)
        return ValueForm::unreadable;
    console::rewindText(file.get());
    char start[sizeof kTextMark] = {};
    const std::string_view read(start, std::fread(start, 1, sizeof kTextMark - 1, file.get()));
    if (beginsWithTextMark(read))
        return ValueForm::text;
    return read.starts_with(kBitmapMark) ? ValueForm::bitmap : ValueForm::binary;
}

bool readValueWords(const std::string& name, const std::function<bool(const char* word)>& visit) {
    const console::File file = openFile(name);
    if (!file)
        return false;
    skipLine(file.get());
    for (std::string word = nextWord(file.get()); !word.empty(); word = nextWord(file.get()))
        if (!visit(word.c_str()))
            break;
    return true;
}

size_t readValueBytes(const std::string& name, std::span<uint8_t> buffer) {
    const console::File file = openFile(name);
    return file ? std::fread(buffer.data(), 1, buffer.size(), file.get()) : 0;
}

}  // namespace operations
