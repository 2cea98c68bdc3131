// A TIFF library for unit tests: files are what the test puts into a map, and failures are as it says.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "hoxi/ovktiff.h"

namespace support {

struct FakeTiffFile {
    TiffFileInfo info{};
    std::vector<uint8_t> pixels;
};

struct FakeTiff {
    std::map<std::string, FakeTiffFile> files;
    int32_t readResult = 0;
    int32_t writeResult = 0;
    int32_t byteCountError = 0;  // added to what getTiffFileInfo tells
};

FakeTiff& fakeTiff();
void resetFakeTiff();

// A file of this size whose pixels count from 0.
FakeTiffFile makeTiff(uint32_t width, uint32_t height);

}  // namespace support
