// The scanner's displays: maps, palette and pictures that follow their command on the memory or bitmap channel. Main
// thread only.
#pragma once

namespace operations {

void configRemoteMap();
void configLocalMap();
void configLocalPalette();
void writeLocalDisplay();
void writeLocalOverlay();

}  // namespace operations
