#include "console/not_built.h"

#include "console/output.h"

namespace console {

void notBuilt() {
    output("TamTest: this operation is not there yet\n");
}

}  // namespace console
