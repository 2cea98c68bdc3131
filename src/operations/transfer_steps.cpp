#include "operations/transfer_steps.h"

#include "console/console_state.h"
#include "console/output.h"
#include "link/waits.h"

namespace operations {
namespace {

bool toldUnless(bool good, const char* otherwise) {
    if (!good)
        console::output("%s", otherwise);
    return good;
}

}  // namespace

bool confirmed(uint32_t code, uint32_t value, uint32_t tag, uint32_t timeoutMs, const char* otherwise) {
    return toldUnless(scannerlink::waitForConfirmation(code, value, tag, timeoutMs) != 0, otherwise);
}

bool completed(uint32_t tag, uint32_t timeoutMs, const char* otherwise) {
    return toldUnless(scannerlink::waitForCommandComplete(tag, timeoutMs) != 0, otherwise);
}

bool transferred(HoxiResult result, const char* otherwise) {
    if (result != 0)
        console::flagError(result);
    return toldUnless(result == 0, otherwise);
}

}  // namespace operations
