#include "operations/histogram_limits.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "console/console_state.h"
#include "console/output.h"
#include "console/regular_file.h"
#include "console/tokenizer.h"
#include "operations/tiff_image.h"
#include "platform/files.h"
#include "platform/new_file.h"

namespace operations {
namespace {

constexpr size_t kFractionOfPixels = 50;
constexpr size_t kLineSize = 128;

using console::File;

using Histogram = std::array<size_t, kLevels>;

// The first level, going step by step from first to last, at which the running sum exceeds the threshold.
int edge(const Histogram& histogram, int first, int last, int step, size_t threshold) {
    size_t sum = 0;
    for (int level = first; level != last + step; level += step) {
        sum += histogram[level];
        if (sum > threshold)
            return level;
    }
    return 0;
}

// A zero byte near the start: an image, say, named where the tally should be. Leaves the file at its start.
bool isBinary(std::FILE* file) {
    std::array<char, kLineSize> start;
    const size_t size = std::fread(start.data(), 1, start.size(), file);
    std::rewind(file);
    return std::find(start.begin(), start.begin() + size, '\0') != start.begin() + size;
}

// The level and, behind a tab, the count.
void takeLine(Tally& tally, const char* line) {
    const char* tab = std::strchr(line, '\t');
    const unsigned long level = std::strtoul(line, nullptr, 10);
    const long long count = tab != nullptr ? std::strtoll(tab + 1, nullptr, 10) : 0;
    tally[level < kLevels ? level : 0] = static_cast<int32_t>(count);
}

// Fills the line with as much as it holds; the rest of a longer one is passed over. False at the end of the file.
bool readLine(std::FILE* file, std::array<char, kLineSize>& line) {
    if (std::fgets(line.data(), static_cast<int>(line.size()), file) == nullptr)
        return false;
    if (std::strchr(line.data(), '\n') == nullptr)
        for (int byte = std::getc(file); byte != EOF && byte != '\n';)
            byte = std::getc(file);
    return true;
}

bool writeLines(File file, const Tally& tally) {
    bool written = true;
    for (size_t level = kLevels; level-- > 0;)
        written = std::fprintf(file.get(), "%d\t%d\n", static_cast<int>(level), static_cast<int>(tally[level])) > 0 &&
                  written;
    return std::fclose(file.release()) == 0 && written;
}

void countOne(int32_t& count) {
    if (count < std::numeric_limits<int32_t>::max())
        ++count;
}

void addToTally(const std::string& name, const HistogramLimits& limits) {
    std::optional<Tally> tally = readTally(name);
    if (tally) {
        countOne((*tally)[limits.bottom]);
        countOne((*tally)[limits.top]);
    }
    if (!tally || !writeTally(name, *tally))
        console::output("TamTest: can't write %s\n", name.c_str());
}

}  // namespace

HistogramLimits histogramLimits(std::span<const uint8_t> pixels) {
    Histogram histogram{};
    for (const uint8_t pixel : pixels)
        ++histogram[pixel];
    const size_t threshold = pixels.size() / kFractionOfPixels;
    return {.bottom = edge(histogram, 1, 254, 1, threshold), .top = edge(histogram, 255, 1, -1, threshold)};
}

std::optional<Tally> readTally(const std::string& name) {
    Tally tally{};
    if (platform::kindOf(name) == platform::FileKind::kNone)
        return tally;
    const File file = console::openRegularFile(name, "r");
    if (!file)
        return std::nullopt;
    if (isBinary(file.get()))
        return std::nullopt;
    std::array<char, kLineSize> line;
    for (size_t lines = 0; lines < kLevels; ++lines) {
        if (!readLine(file.get(), line)) {
            console::consolePrint(" fgets failed\n");
            break;
        }
        takeLine(tally, line.data());
    }
    return tally;
}

bool writeTally(const std::string& name, const Tally& tally) {
    platform::NewFile newFile(name);
    File file(std::fopen(newFile.path().c_str(), "w"));
    return file && writeLines(std::move(file), tally) && newFile.keep();
}

void histogramLimitsOfFile() {
    const char* input = console::nextArgument(console::kMandatory);
    if (input == nullptr)
        return;
    const char* tallyName = console::nextArgument(console::kMandatory);
    console::state.missingParameter = 0;  // the second name may be left out, whatever the syntax says
    const auto info = readTiffInfo(input, tallyName != nullptr ? tallyName : "");
    if (!info)
        return;
    ByteBuffer image(info->byteCount);
    if (!readTiffPixels(input, image))
        return;
    const HistogramLimits limits = histogramLimits(image.bytes());
    if (tallyName == nullptr)
        console::consolePrint(" Bottom edge %d top edge %d\n", limits.bottom, limits.top);
    else
        addToTally(tallyName, limits);
}

}  // namespace operations
