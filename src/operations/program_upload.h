// The one flow of all uploads: announce the length, wait until the scanner is ready, send the data in blocks, wait
// until it has recorded them. Main thread only.
#pragma once

#include <cstdint>

#include "link/command_channel.h"

namespace operations {

// Uploads size bytes that stand at the start of the upload buffer, under the prepared command; they are rounded up to
// whole words with zeros. What fails has been printed. Returns true when the scanner has recorded them.
bool uploadBufferedProgram(const scannerlink::CommandHeader& command, size_t size);

// Reads the file into the upload buffer, at most as much as that holds, and uploads it.
void uploadProgramFile(const scannerlink::CommandHeader& command, const char* name);

}  // namespace operations
