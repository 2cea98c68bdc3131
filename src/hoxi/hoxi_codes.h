// Numbers that travel between program, library and scanner: results, command codes, status codes, transfer flags.
// The values are those of the scanners' interface tables.
#pragma once

#include <cstdint>

namespace hoxi {

// The tables of the tester, and so the scanners it serves, end at this count.
inline constexpr uint32_t kMaxScanners = 8;

// Library results that mean more than "failed".
inline constexpr uint32_t kResultTimedOut = 9004;        // nothing came within the get time-out
inline constexpr uint32_t kResultScannerGone = 9101;     // the library no longer serves this scanner
inline constexpr uint32_t kResultLibraryClosed = 9107;   // HoxiTerminate ended the call
inline constexpr uint32_t kResultStreamEnded = 9105;     // video: the stream is over, no error
inline constexpr uint32_t kResultStreamMustStop = 9106;  // video: HoxiStopVideo is due

// Flags of one call on the image, memory or bitmap channel.
inline constexpr uint32_t kFirstTransfer = 1;
inline constexpr uint32_t kLastTransfer = 2;

enum Command : uint32_t {
    CMD_NOP = 0,
    CMD_RESET = 1,
    CMD_SEND_VERS = 5,
    CMD_SEND_IMG_VERS = 7,
    CMD_SEND_IMAGE = 10,
    CMD_RECV_IMAGE = 11,
    CMD_FREE_IMAGE = 12,
    CMD_GET_DRK_IMAGE = 14,
    CMD_SET_DRK_IMAGE = 15,
    CMD_GET_EQU_IMAGE = 16,
    CMD_SET_EQU_IMAGE = 17,
    CMD_DISPLAY_IMAGE = 19,
    CMD_RECV_COFF = 20,
    CMD_RECV_PCIP = 21,
    CMD_RECV_IPP = 22,
    CMD_RECV_GRIBB_FW = 23,
    CMD_RECV_GRIBB_FPGA = 24,
    CMD_RECV_COLOR_NORM_TABLE = 25,
    CMD_RECV_KERNEL = 26,
    CMD_RECV_RAMDISK = 27,
    CMD_RECV_BOOTLOADER = 28,
    CMD_RECV_JFFS2 = 29,
    CMD_CALIB_FINGER = 30,
    CMD_CHECK_PLATEN = 31,
    CMD_CALIB_HAND = 32,
    CMD_CHECK_ROLLER = 33,
    CMD_CALIB_SLAP = 34,
    CMD_CHECK_FLAT = 35,
    CMD_CALIB_PALM = 36,
    CMD_CONFIG_REMOTE_IMAGE = 41,
    CMD_CONTROL_REMOTE_IMAGE = 42,
    CMD_CONFIG_REMOTE_MAP = 43,
    CMD_CONFIG_REMOTE_BAND = 44,
    CMD_SET_RESOLUTION = 50,
    CMD_CONFIG_HAND_SPEED = 51,
    CMD_SET_DFC_MASK = 54,
    CMD_GET_DFC_MASK = 55,
    CMD_CONFIG_LOCAL_DISPLAY = 60,
    CMD_FILL_LOCAL_DISPLAY = 61,
    CMD_WRITE_LOCAL_DISPLAY = 62,
    CMD_CONTROL_LOCAL_IMAGE = 63,
    CMD_CONFIG_LOCAL_PALETTE = 64,
    CMD_CONFIG_LOCAL_MAP = 65,
    CMD_CONFIG_LOCAL_IMAGE = 66,
    CMD_CONFIG_LOCAL_OVERLAY = 67,
    CMD_CAPTURE_FINGER = 70,
    CMD_CAPTURE_HAND = 71,
    CMD_STOP_CAPTURE = 72,
    CMD_REVIEW_CAPTURE = 73,
    CMD_CAPTURE_SLAP = 74,
    CMD_CAPTURE_PALM = 75,
    CMD_FINISH_FINGER = 77,
    CMD_FINISH_SLAP = 78,
    CMD_REINIT_CAPTURE_TASK = 79,
    CMD_QUERY_SWITCH = 80,
    CMD_QUERY_CAPTURE = 81,
    CMD_QUERY_COMMAND = 82,
    CMD_QUERY_IMAGE_INFO = 83,
    CMD_QUERY_IMAGE_QUAL = 84,
    CMD_QUERY_SCANNERS = 85,
    CMD_QUERY_PREV_INFO = 89,
    CMD_SET_PARAMETERS = 90,
    CMD_GET_PARAMETERS = 91,
    CMD_SAVE_PARAMETERS = 92,
    CMD_RESTORE_PARAMETERS = 93,
    CMD_CHECK_PARAMETERS = 94,
    CMD_RESTORE_DEF_PARAMETERS = 95,
    CMD_GET_DEF_PARAMETERS = 96,
    CMD_CONFIG_SERIAL = 100,
    CMD_XMT_SERIAL = 101,
    CMD_WRT_I2C = 102,
    CMD_READ_I2C = 103,
    CMD_WRT_EEPROM = 104,
    CMD_READ_EEPROM = 105,
    CMD_SET_STATUS_LEDS = 106,
    CMD_GET_STATUS_LEDS = 107,
    CMD_RECV_BAK_KERNEL = 140,
    CMD_RECV_BAK_RAMDISK = 141,
    CMD_RECV_GUI_IMAGES = 142,
    CMD_RECV_OLED_DRIVER_BD = 143,
    CMD_RECV_UBL_LOADER = 144,
    CMD_TEST = 200,
    CMD_READ_WRITE_TEST = 201,
};

enum Status : uint32_t {
    STA_NOP = 1,
    STA_RESET = 2,
    STA_VERSION = 4,
    STA_IMG_VERSION = 7,
    STA_DFC_MASK = 8,
    STA_BUFFER = 12,
    STA_CHANNEL_FIRST = 14,
    STA_CHANNEL_SECOND = 15,
    STA_IMAGE_XFER = 26,
    STA_MEMORY_XFER = 27,
    STA_BITMAP_XFER = 28,
    STA_PLATEN_QUAL = 30,
    STA_ROLLER_QUAL = 31,
    STA_FLAT_QUAL = 32,
    STA_PREV_INFO = 51,
    STA_IMAGE_INFO = 52,
    STA_CAPTURE_QUAL = 53,
    STA_NOT_SUPPORTED = 83,
    STA_READ_I2C = 103,
    STA_STATUS_LEDS = 106,
    STA_CAPTURE_STATE = 131,
    STA_CAPTURE_PROGRESS = 132,
    STA_COMMAND = 133,
    STA_SUBASSEMBLIES = 135,
    STA_SERIAL_DATA = 141,
    STA_TEXT = 200,
};

// State field of STA_COMMAND: anything below kPending or above kComplete is a failure.
inline constexpr int32_t kPending = 1;
inline constexpr int32_t kInProgress = 2;
inline constexpr int32_t kComplete = 3;

}  // namespace hoxi
