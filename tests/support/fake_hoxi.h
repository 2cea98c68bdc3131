// A scanner access library for unit tests: records every call and answers by the rules that the test sets.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "link/report.h"

namespace support {

struct HoxiCall {
    std::string name;                 // without the prefix
    std::vector<uint64_t> numbers;    // in the order of the arguments
    std::vector<uint8_t> bytes = {};  // what was handed over

    bool operator==(const HoxiCall&) const = default;
};

struct FakeHoxi {
    uint32_t scannerCount = 1;
    uint64_t dataBufSize = 65536;
    std::string version = "7.8.9.10";
    std::map<std::string, uint32_t> results;  // by name, 0 when not there
    std::vector<HoxiCall> calls;

    // Asked for every packet after it has been recorded; its result is the call's.
    std::function<uint32_t(uint32_t scanner, const std::vector<uint8_t>& packet)> onPutCommand;
    // Fills the block; without it a fetch ends with 9107. Fetches are not recorded.
    std::function<uint32_t(uint32_t scanner, scannerlink::Report& report)> onGetStatus;
    std::function<void()> onInitialize;

    // One call on a data channel, recorded before: how much it moves, which flags it gives and its result. Without a
    // rule everything asked for is moved; a get gives the bytes of toGive and marks the last block by itself.
    struct Channel {
        uint32_t result = 0;
        uint32_t moved = 0;
        uint32_t flags = 0;
    };
    std::function<void(const std::string& name, Channel& call)> onTransfer;
    std::vector<uint8_t> toGive;
    size_t given = 0;
};

FakeHoxi& fakeHoxi();
void resetFakeHoxi();

// The packets put so far, and the names of all calls in order.
std::vector<std::vector<uint8_t>> packetsPut();
std::vector<std::string> callNames();

}  // namespace support
