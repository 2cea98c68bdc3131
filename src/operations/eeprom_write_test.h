// The EEPROM write test of the camera board: one address after the other, each with the next value of a pattern, each
// write waited for.
#pragma once

namespace operations {

// Operation.
void eepromWriteTest();

}  // namespace operations
