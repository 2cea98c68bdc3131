#pragma once

namespace console {

// Stands in for the operations that are still to come and says so.
void notBuilt();

}  // namespace console
