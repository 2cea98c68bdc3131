#include "link/link_state.h"

namespace scannerlink {

LinkState state;

void resetLinkState() {
    const platform::Mutex mutex = state.newStatusMutex;
    state = LinkState{};
    state.newStatusMutex = mutex;
}

}  // namespace scannerlink
