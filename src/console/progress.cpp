#include "console/progress.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "platform/clock.h"
#include "platform/process.h"

namespace console {
namespace {

constexpr uint64_t kFirstMs = 1000;
constexpr uint64_t kIntervalMs = 200;

void draw(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

}  // namespace

Progress::Progress(uint64_t totalBytes)
    : total_(totalBytes), startMs_(platform::nowMs()), nextMs_(startMs_ + kFirstMs) {}

Progress::~Progress() {
    if (drawn_ > 0)
        draw("\r" + std::string(drawn_, ' ') + "\r");
}

void Progress::update(uint64_t doneBytes) {
    const uint64_t now = platform::nowMs();
    if (now < nextMs_ || doneBytes >= total_)
        return;
    const auto columns = static_cast<size_t>(platform::outputColumns());
    if (columns == 0)
        return;
    nextMs_ = now + kIntervalMs;
    std::string text = progressText(doneBytes, total_, now - startMs_);
    const size_t length = std::min(text.size(), columns - 1);  // a full line would go on in the next
    text.resize(length);
    text.resize(std::max(length, drawn_), ' ');
    drawn_ = text.size();
    draw("\r" + text);
}

std::string progressText(uint64_t doneBytes, uint64_t totalBytes, uint64_t elapsedMs) {
    const double seconds = std::max<double>(static_cast<double>(elapsedMs), 1) / 1000;
    const double rate = static_cast<double>(doneBytes) / seconds;
    const auto percent = static_cast<unsigned>(totalBytes == 0 ? 100 : doneBytes * 100 / totalBytes);
    char text[160];
    const int length = std::snprintf(text, sizeof text, "%" PRIu64 " of %" PRIu64 " bytes, %u %%, %.1f MB/s", doneBytes,
                                     totalBytes, percent, rate / 1e6);
    std::string line(text, length);
    if (rate > 0)
        line += ", " + std::to_string(static_cast<uint64_t>(static_cast<double>(totalBytes - doneBytes) / rate + 0.5)) +
                " s left";
    return line;
}

}  // namespace console
