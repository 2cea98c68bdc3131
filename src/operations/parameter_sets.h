// Parameter sets: giving them to the scanner, showing them, and having the scanner keep or restore them. Values travel
// on the memory channel behind a short command that names the set. Main thread only.
#pragma once

namespace operations {

void setParameters();
void getParameters();
void getDefParameters();
void saveParameters();
void checkParameters();
void setCameraParameters();
void getCameraParameters();

}  // namespace operations
