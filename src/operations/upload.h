// Uploads: scanner code, programmable logic, file systems and tables in the scanner's flash memory are replaced by the
// contents of a file. Main thread only.
#pragma once

#include <cstdint>

#include "hoxi/hoxi_codes.h"

namespace operations {

// Uploads the file that the line names, after checking its extension, under the command code of a row of the table of
// uploads (upload.cpp).
void uploadFile(uint32_t code);

// The same as an operation of the table.
template <uint32_t code>
void upload() {
    uploadFile(code);
}

// Operation: scanner code, whose file must suit the model that the scanner reports.
void uploadScannerCode();

}  // namespace operations
