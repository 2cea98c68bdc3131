// Opening the scanner access library and choosing a scanner. Main thread only.
#pragma once

#include <cstdint>

namespace scannerlink {

// Opens the library, asks for the scanners' buffer sizes and starts the status threads and the video threads.
// Returns the first failing library result, 0 for success; what failed has been printed. May be called again after
// HoxiTerminate.
uint32_t initializeLink();

// Operation.
void selectScanner();

}  // namespace scannerlink
