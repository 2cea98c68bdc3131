// The local display as a picture for people: a binary PPM file, in the colours of the palette.
#pragma once

#include <string>

#include "simulator/local_display.h"

namespace simulator {

// The whole file. A display that is off is black. Pure.
std::string pictureOf(const LocalDisplay& display);
// Writes the picture whole or not at all: whoever looks at the file never sees half of it. False when it cannot be
// written.
bool savePicture(const LocalDisplay& display, const std::string& path);

}  // namespace simulator
