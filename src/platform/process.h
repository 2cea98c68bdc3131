// The process as the system sees it: the standard streams it is given and the exit code it leaves.
#pragma once

#include <cstdint>

namespace platform {

// Gives the process the standard streams that it was started without, leading nowhere, so that no file it opens later
// takes their place. Called first.
void secureStandardStreams();

// How many characters a line has of the terminal that standard output is; 0 when it is none. A terminal that does not
// tell is taken to have 80.
int outputColumns();

// Hands on what standard output still holds. Ends the process when nobody is left to read it: a pipe whose other end is
// closed.
void flushOutput();

// What to end the process with so that whoever started it learns the result. Where the system keeps only part of an
// exit code, a failure never reads as success.
int exitCode(uint32_t result);

}  // namespace platform
