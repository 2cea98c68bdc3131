// Value files: numbers for parameter sets, maps and palettes. A file whose first line begins with ASCII, in any case,
// holds words separated by blanks, tabs and line ends, a word that begins with ";" being a comment to the end of its
// line; any other file is binary and is taken byte for byte. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace operations {

enum class ValueForm {
    unreadable,  // not there, a folder, or cannot be opened
    bitmap,      // begins with BM
    text,
    binary,
};

// What the file says that it is.
ValueForm valueForm(const std::string& name);

// Hands the words of a text value file over, one after the other, until the file ends or the visitor returns false.
// Words are cut at 1024 characters. False when the file cannot be opened.
bool readValueWords(const std::string& name, const std::function<bool(const char* word)>& visit);

// Reads a binary value file into the buffer, as far as that reaches. Returns the bytes read, 0 when it cannot be read.
size_t readValueBytes(const std::string& name, std::span<uint8_t> buffer);

}  // namespace operations
