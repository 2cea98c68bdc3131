// Whole images between the scanner and TIFF files, on the image channel. The names are from the scanner's point of
// view: it sends what the host receives. Main thread only.
#pragma once

namespace operations {

// Operations.
void sendImage();
void recvImage();
void sendImageLoopTest();

}  // namespace operations
