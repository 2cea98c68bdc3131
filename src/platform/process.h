// The process as the system sees it: the standard streams it is given and the exit code it leaves.
#pragma once

#include <cstdint>

namespace platform {

// Gives the process the standard streams that it was started without, leading nowhere, so that no file it opens later
// takes their place. Called first.
void secureStandardStreams();

// True when standard output is a terminal that a person looks at.
bool outputIsTerminal();

// What to end the process with so that whoever started it learns the result. Where the system keeps only part of an
// exit code, a failure never reads as success.
int exitCode(uint32_t result);

}  // namespace platform
