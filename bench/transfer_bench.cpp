// What moving an image costs beside what cannot be done without: the block transfer beside one copy of the image, the
// TIFF library beside the same bytes through a plain file in the same folder. A 50 MB image throughout; the ratio of
// two neighbours of one run is the overhead. The folder is the system's for temporary files, or $TMPDIR.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <vector>

#include "hoxi/hoxi_codes.h"
#include "hoxi/ovktiff.h"
#include "link/block_transfer.h"
#include "link/link_state.h"
#include "support/fake_platform.h"
#include "support/files.h"

namespace {

constexpr uint32_t kColumns = 8000;
constexpr uint32_t kRows = 6300;
constexpr size_t kBytes = size_t{kColumns} * kRows;
constexpr uint64_t kBlock = uint64_t{1} << 20;

std::vector<uint8_t> makeImage() {
    std::vector<uint8_t> pixels(kBytes);
    std::iota(pixels.begin(), pixels.end(), uint8_t{0});
    return pixels;
}

const std::vector<uint8_t>& image() {
    static const std::vector<uint8_t> pixels = makeImage();
    return pixels;
}

std::vector<uint8_t>& room() {
    static std::vector<uint8_t> bytes(kBytes, 1);
    return bytes;
}

// The scanner's side: where the next block goes to or comes from.
size_t position = 0;

HoxiResult takeBlock(uint32_t, const void* data, uint32_t count, uint32_t* transferred, uint32_t) {
    std::memcpy(room().data() + position, data, count);
    position += count;
    *transferred = count;
    return 0;
}

HoxiResult giveBlock(uint32_t, void* buffer, uint32_t count, uint32_t* transferred, uint32_t* flags) {
    std::memcpy(buffer, image().data() + position, count);
    position += count;
    *transferred = count;
    *flags = position == kBytes ? hoxi::kLastTransfer : 0;
    return 0;
}

void countBytes(benchmark::State& run) {
    run.SetBytesProcessed(static_cast<int64_t>(run.iterations() * kBytes));
}

void prepareLink() {
    support::resetFakePlatform();
    scannerlink::resetLinkState();
    scannerlink::state.bufferSizes[0].data = kBlock;
}

void copyTheImage(benchmark::State& run) {
    image();
    for (auto _ : run) {
        std::memcpy(room().data(), image().data(), kBytes);
        benchmark::ClobberMemory();
    }
    countBytes(run);
}
BENCHMARK(copyTheImage)->Unit(benchmark::kMillisecond);

void putTheImageInBlocks(benchmark::State& run) {
    prepareLink();
    image();
    for (auto _ : run) {
        position = 0;
        if (scannerlink::putBlocks(takeBlock, image()) != 0)
            run.SkipWithError("not put");
        benchmark::ClobberMemory();
    }
    countBytes(run);
}
BENCHMARK(putTheImageInBlocks)->Unit(benchmark::kMillisecond);

void getTheImageInBlocks(benchmark::State& run) {
    prepareLink();
    image();
    for (auto _ : run) {
        position = 0;
        if (scannerlink::getBlocks(giveBlock, room()).moved != kBytes)
            run.SkipWithError("not got");
        benchmark::ClobberMemory();
    }
    countBytes(run);
}
BENCHMARK(getTheImageInBlocks)->Unit(benchmark::kMillisecond);

bool writePlain(const std::string& name) {
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (file == nullptr)
        return false;
    const bool written = std::fwrite(image().data(), 1, kBytes, file) == kBytes;
    return std::fclose(file) == 0 && written;
}

bool readPlain(const std::string& name) {
    std::FILE* file = std::fopen(name.c_str(), "rb");
    if (file == nullptr)
        return false;
    const bool read = std::fread(room().data(), 1, kBytes, file) == kBytes;
    std::fclose(file);
    return read;
}

bool writeTiff(const std::string& name) {
    const TiffFileInfo info{8, kColumns, kRows, 500, 500, 1, 0};
    return writeTiffFile(name.c_str(), image().data(), &info) == 0;
}

bool readTiff(const std::string& name) {
    TiffFileInfo info{};
    return getTiffFileInfo(name.c_str(), &info) == static_cast<int32_t>(kBytes) &&
           readTiffFile(name.c_str(), room().data()) == 0;
}

// Every iteration writes a file of its own, since to write over an older one is another thing.
template <bool (*write)(const std::string&)>
void writeImage(benchmark::State& run) {
    const support::TemporaryFolder folder;
    const std::string name = folder.file("image");
    for (auto _ : run) {
        if (!write(name)) {
            run.SkipWithError("not written");
            break;
        }
        run.PauseTiming();
        std::remove(name.c_str());
        run.ResumeTiming();
    }
    countBytes(run);
}
BENCHMARK(writeImage<writePlain>)->Name("writeAPlainFile")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeImage<writeTiff>)->Name("writeATiffFile")->Unit(benchmark::kMillisecond)->UseRealTime();

template <bool (*write)(const std::string&), bool (*read)(const std::string&)>
void readImage(benchmark::State& run) {
    const support::TemporaryFolder folder;
    const std::string name = folder.file("image");
    if (!write(name))
        run.SkipWithError("not written");
    for (auto _ : run)
        if (!read(name))
            run.SkipWithError("not read");
    countBytes(run);
}
BENCHMARK(readImage<writePlain, readPlain>)->Name("readAPlainFile")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readImage<writeTiff, readTiff>)->Name("readATiffFile")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
