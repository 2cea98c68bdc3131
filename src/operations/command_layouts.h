// What the payload of each one-packet command looks like: one constant row per operation, from which its packet is
// built. A command of this kind is one row here and one binding in the operation table.
#pragma once

#include <cstddef>
#include <cstdint>

#include "hoxi/hoxi_codes.h"
#include "operations/command_packet.h"

namespace operations {
namespace layouts {

// So many arguments of the line, and what stands beside them.
constexpr Field u8(size_t count) {
    return {1, count, true};
}
constexpr Field u16(size_t count) {
    return {2, count, true};
}
constexpr Field u32(size_t count) {
    return {4, count, true};
}
constexpr Field byte(uint8_t value) {
    return {1, 1, false, value};
}
constexpr Field word(uint32_t value) {
    return {4, 1, false, value};
}
constexpr Field reserved(size_t bytes) {
    return {1, bytes, false, 0};
}

using enum hoxi::Command;

using Row = CommandLayout;

// clang-format off

// Versions.
inline constexpr Row kSendVers             {CMD_SEND_VERS,              0};
inline constexpr Row kSendImgVers          {CMD_SEND_IMG_VERS,          0};

// Images: handle, scan_type, image_type.
inline constexpr Row kFreeImage            {CMD_FREE_IMAGE,            12, {u32(3)}};
inline constexpr Row kQueryImageInfo       {CMD_QUERY_IMAGE_INFO,      12, {u32(3)}};

// The same three, then repeats, quality, offset, white.
inline constexpr Row kDisplayImage         {CMD_DISPLAY_IMAGE,         28, {u32(7)}};

// Reference images: handle, scanner.
inline constexpr Row kGetDrkImage          {CMD_GET_DRK_IMAGE,          8, {u32(2)}};
inline constexpr Row kSetDrkImage          {CMD_SET_DRK_IMAGE,          8, {u32(2)}};
inline constexpr Row kGetEquImage          {CMD_GET_EQU_IMAGE,          8, {u32(2)}};
inline constexpr Row kSetEquImage          {CMD_SET_EQU_IMAGE,          8, {u32(2)}};

// Calibration images and checks: handle, scan_mode, frames or repeats.
inline constexpr Row kCalibFinger          {CMD_CALIB_FINGER,          12, {u32(3)}};
inline constexpr Row kCheckPlaten          {CMD_CHECK_PLATEN,          12, {u32(3)}};
inline constexpr Row kCalibHand            {CMD_CALIB_HAND,            12, {u32(3)}};
inline constexpr Row kCheckRoller          {CMD_CHECK_ROLLER,          12, {u32(3)}};
inline constexpr Row kCalibSlap            {CMD_CALIB_SLAP,            12, {u32(3)}};
inline constexpr Row kCheckFlat            {CMD_CHECK_FLAT,            12, {u32(3)}};
inline constexpr Row kCalibPalm            {CMD_CALIB_PALM,            12, {u32(3)}};

// The remote display: hzntl_ext, vertl_ext; mode; lines.
inline constexpr Row kConfigRemoteImage    {CMD_CONFIG_REMOTE_IMAGE,    8, {u32(2)}};
inline constexpr Row kControlRemoteImage   {CMD_CONTROL_REMOTE_IMAGE,   4, {u32(1)}};
inline constexpr Row kConfigRemoteBand     {CMD_CONFIG_REMOTE_BAND,     4, {u32(1)}};

// The local display: display_mode; mode; overlay_color.
inline constexpr Row kConfigLocalDisplay   {CMD_CONFIG_LOCAL_DISPLAY,   4, {u32(1)}};
inline constexpr Row kControlLocalImage    {CMD_CONTROL_LOCAL_IMAGE,    4, {u32(1)}};
inline constexpr Row kConfigLocalOverlay   {CMD_CONFIG_LOCAL_OVERLAY,   4, {u32(1)}};

// Areas of it: hzntl_pos, vertl_pos, hzntl_ext, vertl_ext; to fill one, also pixel.
inline constexpr Row kConfigLocalImage     {CMD_CONFIG_LOCAL_IMAGE,    16, {u32(4)}};
inline constexpr Row kFillLocalDisplay     {CMD_FILL_LOCAL_DISPLAY,    20, {u32(5)}};

// What captures go by: scanners, units, resolution; left, center, right.
inline constexpr Row kSetResolution        {CMD_SET_RESOLUTION,        12, {u32(3)}};
inline constexpr Row kConfigHandSpeed      {CMD_CONFIG_HAND_SPEED,     12, {u32(3)}};

// Captures: handle, scan_type, scan_mode. The scanners expect that of a hand to state a size of 0 all the same.
inline constexpr Row kCaptureFinger        {CMD_CAPTURE_FINGER,        12, {u32(3)}};
inline constexpr Row kCaptureHand          {CMD_CAPTURE_HAND,           0, {u32(3)}};
inline constexpr Row kCaptureSlap          {CMD_CAPTURE_SLAP,          12, {u32(3)}};
inline constexpr Row kCapturePalm          {CMD_CAPTURE_PALM,          12, {u32(3)}};
inline constexpr Row kFinishFinger         {CMD_FINISH_FINGER,         12, {u32(3)}};
inline constexpr Row kFinishSlap           {CMD_FINISH_SLAP,           12, {u32(3)}};

// Their course: choice.
inline constexpr Row kStopCapture          {CMD_STOP_CAPTURE,           4, {u32(1)}};
inline constexpr Row kReviewCapture        {CMD_REVIEW_CAPTURE,         4, {u32(1)}};
inline constexpr Row kReinitCaptureTask    {CMD_REINIT_CAPTURE_TASK,    0};

// Questions: mode, timeout, prompt, three frequencies, three durations; tag_id; handle, scan_type.
inline constexpr Row kQuerySwitch          {CMD_QUERY_SWITCH,          36, {u32(9)}};
inline constexpr Row kQueryCapture         {CMD_QUERY_CAPTURE,          0};
inline constexpr Row kQueryCommand         {CMD_QUERY_COMMAND,          4, {u32(1)}};
inline constexpr Row kQueryImageQual       {CMD_QUERY_IMAGE_QUAL,       8, {u32(2)}};
inline constexpr Row kQueryPrevInfo        {CMD_QUERY_PREV_INFO,        8, {u32(2)}};
inline constexpr Row kQueryScanners        {CMD_QUERY_SCANNERS,         0};

// Parameter sets.
inline constexpr Row kRestoreParameters    {CMD_RESTORE_PARAMETERS,     0};
inline constexpr Row kRestoreDefParameters {CMD_RESTORE_DEF_PARAMETERS, 0};

// Serial ports: port, count, data.
inline constexpr Row kConfigSerial         {CMD_CONFIG_SERIAL,          0};
inline constexpr Row kXmtSerial            {CMD_XMT_SERIAL,            40, {u32(2), u8(32)}};

// Camera registers: camera, register, value. The camera board's EEPROM: address, value.
inline constexpr Row kCameraWrite          {CMD_WRT_I2C,                6, {u8(1), reserved(1), u16(2)}};
inline constexpr Row kCameraRead           {CMD_READ_I2C,               6, {u8(1), reserved(1), u16(1), reserved(2)}};
inline constexpr Row kEepromWrite          {CMD_WRT_EEPROM,             4, {u16(1), u8(1), reserved(1)}};
inline constexpr Row kEepromRead           {CMD_READ_EEPROM,            4, {u16(1), reserved(2)}};

// Status LEDs: eight fingers, two thumbs, three capture states. Directed-finger mask: the mask.
inline constexpr Row kSetStatusLeds        {CMD_SET_STATUS_LEDS,       52, {u32(13)}};
inline constexpr Row kGetStatusLeds        {CMD_GET_STATUS_LEDS,        0};
inline constexpr Row kSetDfcMask           {CMD_SET_DFC_MASK,           4, {u32(1)}};
inline constexpr Row kGetDfcMask           {CMD_GET_DFC_MASK,           0};

// Board tests: test type, test option.
inline constexpr Row kTest                 {CMD_TEST,                   8, {u16(1), reserved(2), u8(1), reserved(3)}};

// The read/write test record: target and options 1 to 5. An FPGA register stands in option 2, with a 1 in its third
// byte.
inline constexpr Row kReadWrite            {CMD_READ_WRITE_TEST,       24, {u32(6)}};
inline constexpr Row kFpgaWrite            {CMD_READ_WRITE_TEST,       24,
                                            {word(1), word(1), u16(1), byte(1), reserved(1), u32(1), reserved(8)}};
inline constexpr Row kFpgaRead             {CMD_READ_WRITE_TEST,       24,
                                            {word(1), word(0), u16(1), byte(1), reserved(1), reserved(12)}};
inline constexpr Row kVeskRead             {CMD_READ_WRITE_TEST,       24, {word(4), u32(1), reserved(16)}};

// clang-format on

}  // namespace layouts

// True when the payload fits into a packet and the header states its length. The one exception is the hand capture.
constexpr bool isSound(const CommandLayout& layout) {
    const size_t length = payloadLength(layout);
    return length <= kMaxPayload && (layout.size == length || &layout == &layouts::kCaptureHand);
}

}  // namespace operations
