// What tests of images on their way start from: a scanner that completes every command and confirms transfers, unless
// the test says otherwise.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "link/link_state.h"
#include "link/status_check.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace operations {

using support::FakeHoxi;
using support::fakeHoxi;
using support::fakePlatform;
using support::HoxiCall;
using support::makeReport;
using support::wordBytes;

using Bytes = std::vector<uint8_t>;
using Names = std::vector<std::string>;

class ImageTransfer : public support::TesterTest {
protected:
    void SetUp() override {
        TesterTest::SetUp();
        fakeHoxi().dataBufSize = 4;
        startLink();
        scannerlink::state.quiet = 1;
        fakeHoxi().onPutCommand = [this](uint32_t scanner, const Bytes& packet) {
            uint32_t words[2];
            std::memcpy(words, packet.data(), sizeof words);
            if (completes)
                deliver(makeReport(133, 3, words[1]), scanner);
            if (words[0] == 10)
                answerSend(words[1], scanner);
            return refusal;
        };
        fakeHoxi().onTransfer = [this](const std::string& name, FakeHoxi::Channel& call) {
            if (name == "GetImage" && done && fakeHoxi().given + call.moved == fakeHoxi().toGive.size())
                deliverAt(fakePlatform().nowMs + 30, makeReport(26, 3, lastTag, {5}), lastScanner);
            if (rule)
                rule(name, call);
        };
    }

    void answerSend(uint32_t tag, uint32_t scanner) {
        lastTag = tag;
        lastScanner = scanner;
        fakeHoxi().given = 0;
        if (ready)
            deliverAt(fakePlatform().nowMs + 10, makeReport(26, 3, tag, {1}), scanner);
    }

    // The image information that the scanner has reported: image 5 of scan 6 and type 7. The pitch is not the width's.
    static void reportInfo(uint32_t height, uint32_t width, uint32_t scanner = 0) {
        deliver(makeReport(52, 3, 1, {5, 6, 7, height, width, width + 3, 12, 500, 501}), scanner);
        scannerlink::checkStatus();
    }

    // How long a line took, in milliseconds.
    static uint64_t durationOf(const std::string& line) {
        const uint64_t start = fakePlatform().nowMs;
        type(line);
        return fakePlatform().nowMs - start;
    }

    static Bytes counting(size_t count) {
        Bytes bytes(count);
        for (size_t i = 0; i < count; ++i)
            bytes[i] = static_cast<uint8_t>(i + 1);
        return bytes;
    }

    static Bytes packet64(std::vector<uint32_t> words) {
        words.resize(16, 0);
        return wordBytes(words);
    }

    static Bytes put() {
        Bytes bytes;
        for (const HoxiCall& call : fakeHoxi().calls)
            if (call.name == "PutImage")
                bytes.insert(bytes.end(), call.bytes.begin(), call.bytes.end());
        return bytes;
    }

    bool completes = true;
    bool ready = true;
    bool done = true;
    uint32_t refusal = 0;
    uint32_t lastTag = 0;
    uint32_t lastScanner = 0;
    std::function<void(const std::string&, FakeHoxi::Channel&)> rule;
};

}  // namespace operations
