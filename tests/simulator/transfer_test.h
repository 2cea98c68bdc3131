// Transfers over the memory and the bitmap channel, for tests: one call at a time, or a whole command.
#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "simulator/bus.h"
#include "simulator/inspection.h"
#include "simulator/results.h"
#include "simulator_test.h"

namespace simulator {

class TransferTest : public SimulatorTest {
protected:
    using Bytes = std::vector<uint8_t>;

    static Bytes ramp(size_t size, uint8_t first = 3) {
        Bytes bytes(size);
        std::iota(bytes.begin(), bytes.end(), first);
        return bytes;
    }
    // One call in short: "result moved".
    static std::string putMemory(const Bytes& block, uint32_t flags) { return putBy(HoxiPutMemory, block, flags); }
    static std::string putBitmap(const Bytes& block, uint32_t flags) { return putBy(HoxiPutBitmap, block, flags); }
    // One call in short, "result moved flags"; the bytes moved are put behind the others.
    static std::string getMemory(uint32_t size, Bytes& bytes) {
        Bytes block(size, 0xEE);
        uint32_t moved = 77;
        uint32_t flags = 77;
        const HoxiResult result = HoxiGetMemory(0, block.data(), size, &moved, &flags);
        bytes.insert(bytes.end(), block.begin(), block.begin() + std::min(moved, size));
        return std::to_string(result) + " " + std::to_string(moved) + " " + std::to_string(flags);
    }
    // Expects a command to become ready for its transfer.
    void ask(uint32_t code, uint32_t tag, std::initializer_list<uint32_t> words) {
        send(code, tag, words);
        const std::string end = ":" + std::to_string(tag);
        EXPECT_EQ(nextBriefs(2), "133:1" + end + " 27:3" + end);
    }
    std::string stateOf(uint32_t tag) { return untilComplete(tag).back().brief(); }
    // Whole commands.
    void setParameters(uint32_t tag, uint32_t set, const Bytes& values) {
        ask(90, tag, {set, static_cast<uint32_t>(values.size())});
        EXPECT_EQ(putMemory(values, 3), "0 " + std::to_string(values.size()));
        EXPECT_EQ(next().brief(), "133:3:" + std::to_string(tag));
    }
    Bytes getParameters(uint32_t tag, uint32_t set, uint32_t size, uint32_t code = 91) {
        ask(code, tag, {set, size});
        Bytes values;
        EXPECT_EQ(getMemory(size, values), "0 " + std::to_string(size) + " 3");
        EXPECT_EQ(next().brief(), "133:3:" + std::to_string(tag));
        return values;
    }
    void announceUpload(uint32_t code, uint32_t tag, uint32_t byteCount) {
        std::vector<uint8_t> packet = makePacket(code, tag, wordsOf({byteCount}));
        packet[8] = 0;  // programs state no size
        uint32_t word = 0;
        EXPECT_EQ(HoxiPutCommand(0, packet.data(), static_cast<uint32_t>(packet.size()), &word), 0u);
    }
    void upload(uint32_t code, uint32_t tag, const Bytes& bytes) {
        announceUpload(code, tag, static_cast<uint32_t>(bytes.size()));
        const std::string end = ":" + std::to_string(tag);
        EXPECT_EQ(nextBriefs(2), "133:1" + end + " 27:3" + end);
        EXPECT_EQ(putMemory(bytes, 3), "0 " + std::to_string(bytes.size()));
        EXPECT_EQ(next().brief(), "133:3" + end);
    }

private:
    static std::string putBy(decltype(HoxiPutMemory) put, const Bytes& block, uint32_t flags) {
        uint32_t moved = 77;
        const HoxiResult result = put(0, block.data(), static_cast<uint32_t>(block.size()), &moved, flags);
        return std::to_string(result) + " " + std::to_string(moved);
    }
};

}  // namespace simulator
