// What the displays show, as pictures for people: TIFF files of 8-bit red, green and blue, not compressed.
#pragma once

#include <string>

#include "simulator/local_display.h"

namespace simulator {

// The local display in the colours of its palette; black while it is off. The whole file. Pure.
std::string displayPicture(const LocalDisplay& display);

// The gray map of the display area on the host: all grays from black to white, and below them what the map makes of
// each. The whole file, of 256 x 128 pixels. Pure.
std::string mapPicture(const GrayMap& map);

// Writes the picture whole or not at all: whoever looks at the file never sees half of it. False when it cannot be
// written.
bool savePicture(const std::string& picture, const std::string& path);

}  // namespace simulator
