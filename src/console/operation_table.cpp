#include "console/operation_table.h"

#include "console/help.h"
#include "console/not_built.h"
#include "console/output.h"
#include "console/scripts.h"
#include "console/settings.h"
#include "console/tester.h"
#include "link/command_channel.h"
#include "link/exercise.h"
#include "link/scanner_link.h"
#include "operations/command_catalogue.h"
#include "operations/display_setup.h"
#include "operations/eeprom_write_test.h"
#include "operations/histogram_limits.h"
#include "operations/image_transfer.h"
#include "operations/parameter_sets.h"
#include "operations/upload.h"

namespace console {

using operations::sendRow;
using operations::upload;
using namespace operations::layouts;

// Each file holds neighbouring rows; their order here is the order of the table.
// clang-format off
const Operation kOperations[kOperationCount + 1] = {
#include "console/table/tester.inc"
#include "console/table/images.inc"
#include "console/table/upload.inc"
#include "console/table/references_display.inc"
#include "console/table/capture.inc"
#include "console/table/parameters.inc"
#include "console/table/boards_calibration.inc"
    {nullptr, nullptr, nullptr, nullptr, nullptr}
};
// clang-format on

}  // namespace console
