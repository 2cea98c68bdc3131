// Every file of the scenarios folder that is about captures, images and boards does what its first lines say.
#include <string>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "simulator_test.h"

namespace simulator {
namespace {

constexpr uint32_t kFingerSize = 800 * 750;

class ImageScenariosTest : public SimulatorTest {
protected:
    std::string stateOf(uint32_t tag) { return untilComplete(tag).back().brief(); }
    // One call: "result moved flags".
    std::string getBlock(std::vector<uint8_t>& pixels, size_t position) {
        uint32_t moved = 0;
        uint32_t flags = 0;
        const auto size = static_cast<uint32_t>(pixels.size() - position);
        const HoxiResult result = HoxiGetImage(0, pixels.data() + position, size, &moved, &flags);
        return std::to_string(result) + " " + std::to_string(moved) + " " + std::to_string(flags);
    }
    // One call: "result moved".
    std::string putBlock(const std::vector<uint8_t>& pixels, size_t position, uint32_t flags) {
        uint32_t moved = 0;
        const auto size = static_cast<uint32_t>(pixels.size() - position);
        const HoxiResult result = HoxiPutImage(0, pixels.data() + position, size, &moved, flags);
        return std::to_string(result) + " " + std::to_string(moved);
    }
    void announce(uint32_t tag, uint32_t handle, uint32_t size) {
        send(hoxi::CMD_RECV_IMAGE, tag, {handle, 1, 1, 1, size, size, 500, 500, size});
        untilComplete(tag);
    }
    // An image with this handle in the scanner, loaded in one go.
    void load(uint32_t tag, uint32_t handle, uint32_t size) {
        announce(tag, handle, size);
        EXPECT_EQ(putBlock(std::vector<uint8_t>(size, 9), 0, 3), "0 " + std::to_string(size));
    }
    void ask(uint32_t tag, uint32_t handle, uint32_t size) {
        send(hoxi::CMD_SEND_IMAGE, tag, {handle, 1, 1, size});
        EXPECT_EQ(stateOf(tag), "133:3:" + std::to_string(tag));
    }
    std::string progressOf(uint32_t tag) {
        std::string codes;
        for (const SeenReport& report : untilComplete(tag)) {
            codes += report.code == 132 ? std::to_string(report.word(32)) + " " : "";
        }
        return codes;
    }
};

TEST_F(ImageScenariosTest, TransferFails) {
    openFile("transfer-fails");
    std::vector<uint8_t> pixels(kFingerSize, 7);
    announce(1, 5, kFingerSize);
    EXPECT_EQ(putBlock(pixels, 0, 1), "9051 200000");
    EXPECT_EQ(putBlock(pixels, 200'000, 0), "0 200000");
    EXPECT_EQ(putBlock(pixels, 400'000, 2), "0 200000");
    ask(2, 5, kFingerSize);
    EXPECT_EQ(getBlock(pixels, 0), "0 200000 1");
    EXPECT_EQ(getBlock(pixels, 200'000), "9050 200000 0");
    EXPECT_EQ(getBlock(pixels, 400'000), "0 200000 2");
}

TEST_F(ImageScenariosTest, TransferRefused) {
    openFile("transfer-refused");
    std::vector<uint8_t> pixels(10, 7);
    announce(1, 5, 10);
    EXPECT_EQ(putBlock(pixels, 0, 3), "9053 0");
    EXPECT_EQ(putBlock(pixels, 0, 3), "0 10");
    ask(2, 5, 10);
    EXPECT_EQ(getBlock(pixels, 0), "9052 0 0");
    EXPECT_EQ(getBlock(pixels, 0), "0 10 3");
}

TEST_F(ImageScenariosTest, LastFlagEarly) {
    openFile("last-flag-early");
    announce(1, 5, 300'000);
    std::vector<uint8_t> pixels(300'000, 7);
    EXPECT_EQ(putBlock(pixels, 0, 1), "0 200000");
    EXPECT_EQ(putBlock(pixels, 200'000, 2), "0 100000");
    ask(2, 5, 300'000);
    EXPECT_EQ(getBlock(pixels, 0), "0 200000 3");
    EXPECT_EQ(getBlock(pixels, 200'000), "0 100000 2");
}

TEST_F(ImageScenariosTest, LastFlagMissing) {
    openFile("last-flag-missing");
    load(1, 5, 10);
    for (uint32_t tag = 2; tag <= 3; ++tag) {
        std::vector<uint8_t> pixels(10);
        ask(tag, 5, 10);
        EXPECT_EQ(getBlock(pixels, 0), "0 10 1");
    }
}

TEST_F(ImageScenariosTest, ReadBackCorrupted) {
    openFile("read-back-corrupted");
    load(1, 5, 200);
    const std::vector<uint8_t> sound(200, 9);
    std::vector<uint8_t> changed = sound;
    changed[100] = 0xFF ^ 9;
    for (uint32_t pass = 1; pass <= 6; ++pass) {
        EXPECT_EQ(fetchImage(1 + pass, 5, 1, 1, 200), pass % 3 == 0 ? changed : sound) << pass;
    }
}

TEST_F(ImageScenariosTest, LoadedImageCorrupted) {
    openFile("loaded-image-corrupted");
    load(1, 5, 3);
    load(2, 6, 3);
    for (uint32_t tag = 3; tag <= 4; ++tag) {
        EXPECT_EQ(fetchImage(tag, 5, 1, 1, 3), (std::vector<uint8_t>{0xFF ^ 9, 9, 9}));
    }
    EXPECT_EQ(fetchImage(5, 6, 1, 1, 3), (std::vector<uint8_t>{9, 9, 9}));
}

TEST_F(ImageScenariosTest, TransferShort) {
    openFile("transfer-short");
    std::vector<uint8_t> pixels(2500, 7);
    announce(1, 5, 2500);
    EXPECT_EQ(putBlock(pixels, 0, 3), "0 1000");
    EXPECT_EQ(putBlock(pixels, 1000, 2), "0 1000");
    EXPECT_EQ(putBlock(pixels, 2000, 2), "0 500");
    ask(2, 5, 2500);
    EXPECT_EQ(getBlock(pixels, 0), "0 1000 1");
    EXPECT_EQ(getBlock(pixels, 1000), "0 1000 0");
    EXPECT_EQ(getBlock(pixels, 2000), "0 500 2");
}

TEST_F(ImageScenariosTest, TransferMovesNothing) {
    openFile("transfer-moves-nothing");
    std::vector<uint8_t> pixels(300'000, 7);
    load(1, 4, 150'000);
    announce(2, 5, 300'000);
    EXPECT_EQ(putBlock(pixels, 0, 1), "0 0");
    EXPECT_EQ(putBlock(pixels, 0, 0), "0 0");
    pixels.resize(150'000);
    ask(3, 4, 150'000);
    uint32_t moved = 0;
    uint32_t flags = 0;
    EXPECT_EQ(HoxiGetImage(0, pixels.data(), 100'000, &moved, &flags), 0u);
    EXPECT_EQ(moved, 100'000u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(getBlock(pixels, 100'000), "0 0 0");
    }
}

TEST_F(ImageScenariosTest, TransferClaimsMore) {
    openFile("transfer-claims-more");
    std::vector<uint8_t> pixels(10, 7);
    for (const char* const claim : {"0 1010", "0 4294967295", "0 10"}) {
        announce(1, 5, 10);
        EXPECT_EQ(putBlock(pixels, 0, 3), claim);
    }
    for (const char* const claim : {"0 1010 3", "0 4294967295 3", "0 10 3"}) {
        ask(2, 5, 10);
        EXPECT_EQ(getBlock(pixels, 0), claim);
        EXPECT_EQ(nextBriefs(3), "26:3:2 26:3:2 133:3:2");
    }
}

TEST_F(ImageScenariosTest, TransferNotReported) {
    openFile("transfer-not-reported");
    std::vector<uint8_t> pixels(10);
    load(1, 5, 10);
    // The reports before the transfer, and those after it.
    const char* const before[] = {"133:1:2 133:3:2", "133:1:2 133:3:2 26:3:2", "133:1:2 26:3:2",
                                  "133:1:2 133:3:2 26:3:2"};
    const char* const after[] = {"26:3:2 133:3:2", "133:3:2", "26:3:2 133:3:2", "26:3:2"};
    for (size_t i = 0; i < 4; ++i) {
        send(hoxi::CMD_SEND_IMAGE, 2, {5, 1, 1, 10});
        EXPECT_EQ(nextBriefs(i % 2 == 0 ? 2 : 3), before[i]);
        EXPECT_EQ(getBlock(pixels, 0), "0 10 3");
        EXPECT_EQ(nextBriefs(i == 1 || i == 3 ? 1 : 2), after[i]);
    }
    ask(6, 5, 10);
    EXPECT_EQ(next().words(1), "9");
}

TEST_F(ImageScenariosTest, TransferNotAccepted) {
    openFile("transfer-not-accepted");
    send(hoxi::CMD_RECV_IMAGE, 1, {5, 1, 1, 1, 10, 10, 0, 0, 10});
    EXPECT_EQ(stateOf(1), "133:7:1");
    load(2, 5, 10);
    send(hoxi::CMD_SEND_IMAGE, 3, {5, 1, 1, 10});
    EXPECT_EQ(stateOf(3), "133:6:3");
    ask(4, 5, 10);
}

TEST_F(ImageScenariosTest, NobodyTouches) {
    openFile("nobody-touches");
    const char* const progress[] = {"1 2 14 ", "1 2 3 4 10 11 13 ", "1 2 3 4 10 11 13 "};
    for (uint32_t choice = 0; choice < 3; ++choice) {
        send(hoxi::CMD_CAPTURE_FINGER, 10 + choice, {choice, 1, 1});
        send(hoxi::CMD_STOP_CAPTURE, 20 + choice, {choice});
        EXPECT_EQ(progressOf(10 + choice), progress[choice]);
    }
}

TEST_F(ImageScenariosTest, CaptureNotCompleted) {
    openFile("capture-not-completed");
    const char* const expected[] = {
        "133:1:1 132:2:1 132:2:1 132:2:1 132:2:1 132:2:1 132:2:1 133:3:1",
        "133:1:2 132:2:2 132:2:2 132:2:2 132:2:2 132:2:2 132:2:2 132:3:2 133:3:2",
        "133:1:3 132:2:3 132:2:3 132:2:3 132:2:3 132:2:3 132:2:3 132:3:3",
        "133:1:4 132:2:4 132:2:4 132:2:4 132:2:4 132:2:4 132:2:4 132:3:4 133:-1:4",
    };
    const size_t counts[] = {8, 9, 8, 9};
    for (uint32_t tag = 1; tag <= 4; ++tag) {
        send(hoxi::CMD_CAPTURE_FINGER, tag, {tag, 1, 1});
        EXPECT_EQ(nextBriefs(counts[tag - 1]), expected[tag - 1]);
        send(hoxi::CMD_QUERY_IMAGE_INFO, 10, {tag, 1, 1});
        EXPECT_EQ(nextBriefs(3), "133:1:10 52:3:10 133:3:10");
    }
}

TEST_F(ImageScenariosTest, ImageMemoryFull) {
    openFile("image-memory-full");
    send(hoxi::CMD_CAPTURE_FINGER, 1, {1, 1, 1});
    EXPECT_EQ(progressOf(1), "1 2 3 4 10 11 13 ");
    send(hoxi::CMD_CAPTURE_FINGER, 2, {2, 1, 1});
    EXPECT_EQ(progressOf(2), "1 2 3 4 10 11 15 ");
    send(hoxi::CMD_RECV_IMAGE, 3, {3, 1, 1, 1, 100'001, 100'001, 0, 0, 100'001});
    EXPECT_EQ(stateOf(3), "133:7:3");
    send(hoxi::CMD_FREE_IMAGE, 4, {1, 1, 1});
    EXPECT_EQ(stateOf(4), "133:3:4");
    load(5, 3, 700'000);
}

TEST_F(ImageScenariosTest, ImageSizesAbsurd) {
    openFile("image-sizes-absurd");
    const uint32_t captures[] = {70, 74, 75};
    const char* const sizes[] = {"750 0 0", "4294967295 4294967295 4294967295", "100000 100000 100000"};
    for (uint32_t i = 0; i < 3; ++i) {
        send(captures[i], 1, {i, 1, 1});
        EXPECT_EQ(stateOf(1), "133:3:1");
        send(hoxi::CMD_QUERY_IMAGE_INFO, 2, {i, 1, 1});
        next();
        EXPECT_EQ(next().words(6), std::to_string(i) + " 1 1 " + sizes[i]);
        next();
        send(hoxi::CMD_SEND_IMAGE, 3, {i, 1, 1, 1'410'065'408});
        EXPECT_EQ(stateOf(3), "133:6:3");
    }
}

TEST_F(ImageScenariosTest, ImageInfoWrong) {
    openFile("image-info-wrong");
    load(1, 5, 10);
    const char* const bodies[] = {"99 1 1 1 10", "5 99 1 1 10", "5 1 99 1 10", "5 1 1 4294967295 10", "5 1 1 1 0"};
    for (const char* const body : bodies) {
        send(hoxi::CMD_QUERY_IMAGE_INFO, 2, {5, 1, 1});
        EXPECT_EQ(next().brief(), "133:1:2");
        EXPECT_EQ(next().words(5), body);
        EXPECT_EQ(next().brief(), "133:3:2");
    }
    send(hoxi::CMD_QUERY_IMAGE_INFO, 3, {5, 1, 1});
    EXPECT_EQ(nextBriefs(2), "133:1:3 133:3:3");
}

TEST_F(ImageScenariosTest, BoardsFail) {
    openFile("boards-fail");
    const std::vector<uint8_t> eeprom{5, 0, 1, 0};
    const std::vector<uint8_t> camera{2, 0, 43, 0, 9, 0};
    for (uint32_t tag = 1; tag <= 4; ++tag) {
        put(0, hoxi::CMD_WRT_EEPROM, tag, eeprom);
    }
    EXPECT_EQ(nextBriefs(7), "133:1:1 133:3:1 133:1:2 133:3:2 133:1:3 133:6:3 133:1:4");
    put(0, hoxi::CMD_WRT_I2C, 5, camera);
    put(0, hoxi::CMD_WRT_I2C, 6, camera);
    EXPECT_EQ(nextBriefs(2), "133:3:5 133:-1:6");
    put(0, hoxi::CMD_READ_I2C, 7, camera);
    put(0, hoxi::CMD_READ_I2C, 8, camera);
    put(0, hoxi::CMD_NOP, 9);
    EXPECT_EQ(nextBriefs(4), "103:9:7 133:3:7 103:9:8 1:3:9");
}

}  // namespace
}  // namespace simulator
