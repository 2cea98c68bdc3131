// What goes over the memory channel, from files on the host into the simulated scanner and back.

#include <algorithm>
#include <cctype>
#include <random>
#include <vector>

#include "console/console_state.h"
#include "simulator/inspection.h"
#include "system/system_test.h"

namespace systemtest {
namespace {

constexpr uint32_t kCoff = 20;
constexpr uint32_t kPcip = 21;

class Memory : public SystemTest {
protected:
    void begin(const std::string& scenario = "") { start(scenario, 50); }

    static bool contains(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }
    // What was printed without dates and reports: only what the operation itself says.
    static std::string said(const std::string& text) {
        std::string kept;
        for (size_t at = 0; at < text.size();) {
            const size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
            const std::string line = text.substr(at, end - at);
            const bool isReport = line.starts_with("  scanner: ") || line.starts_with("    ") ||
                                  (line.size() == 25 && std::isdigit(static_cast<unsigned char>(line[20])));
            if (!isReport)
                kept += line;
            at = end;
        }
        return kept;
    }
    static std::string chance(size_t size) {
        std::mt19937 random(4711);
        std::string bytes(size, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        return bytes;
    }
    static std::string flash(uint32_t code) {
        const std::vector<uint8_t> bytes = simulator::flashContents(0, code);
        return {bytes.begin(), bytes.end()};
    }
    static void expectParametersMove() {
        EXPECT_FALSE(contains(type("sp 13 4711"), "TamTest: "));
        EXPECT_TRUE(contains(type("gp 13"), "\n4711\n"));
    }
    std::string file(const std::string& name, const std::string& content) {
        support::writeFile(folder.file(name), content);
        return folder.file(name);
    }

    support::TemporaryFolder folder;
};

TEST_F(Memory, UploadOfAHundredMegabytesArrivesByteForByte) {
    begin();
    const std::string content = chance(100'000'000);
    const std::string name = file("large.rbf", content);
    EXPECT_EQ(said(type("rpcip " + name)),
              "scanner 0 command: code=21, tag=1, size=0 - hoxirtn=0\n UPGRADE SUCCESSFULLY LOADED\n");
    EXPECT_TRUE(flash(kPcip) == content);
}

TEST_F(Memory, UploadIsFilledUpToWords) {
    begin();
    type("rpcip " + file("x.rbf", "12345"));
    EXPECT_EQ(flash(kPcip), std::string("12345\0\0\0", 8));
}

TEST_F(Memory, FillingIsZeroAfterALongerUpload) {
    begin();
    type("rpcip " + file("x.rbf", "1234567890ABCDEF"));
    type("rpcip " + file("y.rbf", "abcde"));
    EXPECT_EQ(flash(kPcip), std::string("abcde\0\0\0", 8));
}

TEST_F(Memory, EveryUploadReachesItsOwnFlashArea) {
    begin();
    const std::pair<std::string, std::string> uploads[] = {
        {"rpcip", "rbf"}, {"ripp", "rbf"},  {"rtfw", "hex"}, {"rtfp", "xsvf"}, {"rcnt", "cc"},
        {"rken", "knl"},  {"rram", "ram"},  {"rbot", "ubt"}, {"rjfs", "jfs"},  {"rbken", "knl"},
        {"rbram", "ram"}, {"rguii", "img"}, {"rodb", "bin"}, {"rubl", "ubl"},
    };
    for (const auto& [operation, extension] : uploads)
        type(operation + " " + file(operation + "." + extension, "for " + operation + "..."));
    const uint32_t codes[] = {21, 22, 23, 24, 25, 26, 27, 28, 29, 140, 141, 142, 143, 144};
    for (size_t i = 0; i < std::size(codes); ++i)
        EXPECT_EQ(flash(codes[i]).substr(0, 4 + uploads[i].first.size()), "for " + uploads[i].first) << codes[i];
}

TEST_F(Memory, ScannerCodeMustSuitTheModel) {
    begin();
    const std::string unfit = type("rcof " + file("MX-1100.dsp.1.00.ovk", "scanner code"));
    EXPECT_TRUE(contains(unfit,
                         "TamTest: invalid firmware file for this scanner\n"
                         "TamTest: should be in form Tamsel.x.xx.ovk\n"))
        << unfit;
    EXPECT_EQ(flash(kCoff), "");
    const std::string fit = type("rcof " + file("Tamsel.1.00.ovk", "scanner code"));
    EXPECT_TRUE(contains(fit, " UPGRADE SUCCESSFULLY LOADED\n")) << fit;
    EXPECT_EQ(flash(kCoff), "scanner code");
}

TEST_F(Memory, FailedUploadLeavesTheOldContentAndTheLinkUsable) {
    begin("[[call_fault]]\nfunction = \"HoxiPutMemory\"\nnth = 2\nresult = 9020\n");
    type("rpcip " + file("x.rbf", "the old content!"));
    const std::string text = type("rpcip " + file("y.rbf", "the new content!"));
    EXPECT_TRUE(contains(text, "TamTest: failed in HoxiPutMemmory\n")) << text;
    EXPECT_EQ(flash(kPcip), "the old content!");
    expectParametersMove();
}

TEST_F(Memory, ParametersOfAFileComeBackAsTheyWereSet) {
    begin();
    type("sp " + file("set", "ascii\n1 ; the set\n0x10 -1\n"));
    const std::string text = type("gp 1");
    EXPECT_TRUE(contains(text, "\n16 -1\n")) << text;
    const std::string defaults = type("gdp 1");
    EXPECT_FALSE(contains(defaults, "\n16 -1\n")) << defaults;
    EXPECT_FALSE(contains(defaults, "TamTest: ")) << defaults;
}

TEST_F(Memory, BinaryParameterFileIsReadFromItsFirstByte) {
    begin();
    type("sp " + file("set", std::string("\x0D\0\0\0\x2C\1\0\0", 8)));
    const std::string text = type("gp 13 %x");
    EXPECT_TRUE(contains(text, "\n12c\n")) << text;
}

TEST_F(Memory, LargestSetIsMovedInBlocks) {
    begin("[[scanner]]\ndata_buffer_size = 1000\n");
    std::string words(4 + 131072, '\0');
    words[0] = 6;
    for (size_t i = 4; i < words.size(); i += 4)
        words[i] = static_cast<char>(i / 4 % 100);
    const std::string set = type("sp " + file("set", words));
    EXPECT_FALSE(contains(set, "TamTest: ")) << set;
    const std::string text = type("gp 6");
    EXPECT_TRUE(contains(text, "\n1 2 3 4 5 6 7 8\n9 10 ")) << text;
    EXPECT_TRUE(contains(text, ">>> remaining 32608 items skipped\n")) << text;
}

TEST_F(Memory, ParameterSetThatDoesNotExistEndsAtTheScanner) {
    begin();
    const std::string text = type("sp " + file("set", "ascii\n200 1 2\n"));
    EXPECT_TRUE(contains(text, "TamTest: invalid parameter set\n")) << text;
    EXPECT_TRUE(contains(text, "TamTest: didn't get set_parm confirmation status\n")) << text;
    expectParametersMove();
}

TEST_F(Memory, CameraParametersComeBack) {
    begin();
    type("scp 1 2 3 4 5 6 7 8 9 10");
    const std::string text = type("gcp");
    EXPECT_TRUE(contains(text, "\n1 2 3 4 5 6 7 8\n9 10\n")) << text;
}

TEST_F(Memory, EepromTestWritesEveryAddress) {
    begin();
    const std::string text = type("eewt 10 13 0x1FF");
    EXPECT_FALSE(contains(text, "Failed")) << text;
    const std::pair<const char*, const char*> bytes[] = {
        {"9", "255"}, {"10", "255"}, {"11", "0"}, {"12", "1"}, {"13", "255"}};
    for (const auto& [address, value] : bytes) {
        type(std::string("eer ") + address);
        const std::string answer = type("ew 133 3");
        EXPECT_TRUE(contains(answer, std::string("code: 105  state: ") + value + "  ")) << address << ": " << answer;
    }
}

TEST_F(Memory, RemoteMapOfAFileReachesTheScanner) {
    begin();
    std::string values = "ascii\n";
    for (int i = 0; i < 256; ++i)
        values += std::to_string(255 - i) + (i % 16 == 15 ? " ; a line\n" : " ");
    type("cfgrmm " + file("map", values));
    const simulator::GrayMap map = simulator::remoteDisplay(0).map();
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(map[static_cast<size_t>(i)], 255 - i);
}

TEST_F(Memory, LocalMapsOfRangesReachTheScanner) {
    begin();
    type("cfglcm 0 256 128 64");
    const simulator::LocalDisplay display = simulator::localDisplay(0);
    EXPECT_EQ(display.normalMap[3], 3);
    EXPECT_EQ(display.qualityMap[3], 128);
    EXPECT_EQ(display.qualityMap[2], 2);
}

}  // namespace
}  // namespace systemtest
