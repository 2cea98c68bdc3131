#include "link/scanner_link.h"

#include <algorithm>
#include <cinttypes>

#include "console/output.h"
#include "console/tokenizer.h"
#include "hoxi/hoxi.h"
#include "link/link_state.h"
#include "link/status_thread.h"

namespace scannerlink {
namespace {

// What the library wants to be opened with; its meaning is the library's.
constexpr uint32_t kInitializeValue = 1000;

uint32_t openLibrary() {
    uint32_t found = 0;
    const HoxiResult result = HoxiInitialize(kInitializeValue, &found);
    if (result == 0)
        console::output("TamTest: HoxiInitialize found %" PRId32 " scanners\n", static_cast<int32_t>(found));
    else
        console::output("TamTest: Failed HoxiInitialize ()\n");
    state.scannerCount = result == 0 ? std::min(found, hoxi::kMaxScanners) : 0;
    if (result == 0 && found > hoxi::kMaxScanners)
        console::output("TamTest: only the first %" PRIu32 " scanners are used\n", hoxi::kMaxScanners);
    return result;
}

uint32_t readBufferSizes() {
    for (uint32_t scanner = 0; scanner < state.scannerCount; ++scanner) {
        BufferSizes& sizes = state.bufferSizes[scanner];
        sizes = BufferSizes{};
        const HoxiResult result = HoxiGetBufSize(scanner, &sizes.first, &sizes.second, &sizes.data);
        if (result != 0) {
            console::output("TamTest: Failed HoxiGetBufSize () for scanner %" PRId32 "\n",
                            static_cast<int32_t>(scanner));
            return result;
        }
    }
    return 0;
}

}  // namespace

uint32_t initializeLink() {
    uint32_t result = openLibrary();
    if (result == 0)
        result = readBufferSizes();
    startStatusFetches();
    if (state.startVideoThreads != nullptr)
        state.startVideoThreads();
    return result;
}

void selectScanner() {
    if (const char* word = console::nextArgument(console::kOptional)) {
        const uint32_t index = console::toUnsigned(word);
        if (index < state.scannerCount)
            state.currentScanner = index;
        else
            console::output("Invalid scanner index\n");
    }
    console::output("scanner index: %" PRId32 "\n", static_cast<int32_t>(state.currentScanner));
}

}  // namespace scannerlink
