// Operations that exercise the command path and the reset path of the scanners.
#pragma once

namespace scannerlink {

void nop();
void nopLoop();
void reset();
void resetLoop();

}  // namespace scannerlink
