#include "link/report_layouts.h"

#include "hoxi/hoxi_codes.h"
#include "link/report.h"

namespace scannerlink {
namespace {

using enum FieldKind;

constexpr FieldLine kVersion[] = {
    {"    assy_make:    %s\n", 20, text, 8},   {"    assy_model:   %s\n", kModelOffset, text, kModelSize},
    {"    assy_sn:      %s\n", 44, text, 16},  {"    assy_year:    %d\n", 60, unsigned16},
    {"    assy_month:   %d\n", 62, unsigned8}, {"    assy_day:     %d\n", 63, unsigned8},
    {"    soft_version: %s\n", 64, text, 12},  {"    soft_year:    %d\n", 76, unsigned16},
    {"    soft_month:   %d\n", 78, unsigned8}, {"    soft_day:     %d\n", 79, unsigned8},
};

constexpr FieldLine kImageVersion[] = {
    {"    Image Processing Version:    %s\n", kBodyOffset, text, kReportSize - kBodyOffset},
};

constexpr FieldLine kMask[] = {{"    Mask == 0x%x\n", 20}};

constexpr FieldLine kBuffer[] = {{"    buf_id: %d\n", 20}, {"    buf_size: %d\n", 24}};

constexpr FieldLine kChannel[] = {{"    chnl: %d\n", 20}};

constexpr FieldLine kImageTransfer[] = {
    {"    xfer_stat: %d\n", 20}, {"    xfer_type: %d\n", 24},  {"    status: 0x%x\n", 28},
    {"    handle: %d\n", 32},    {"    scan_type: %d\n", 36},  {"    image_type: %d\n", 40},
    {"    seq_count: %d\n", 44}, {"    byte_count: %d\n", 48},
};

constexpr FieldLine kTransfer[] = {
    {"    xfer_stat: %d\n", 20}, {"    xfer_type: %d\n", 24},  {"    status: 0x%x\n", 28},
    {"    seq_count: %d\n", 32}, {"    byte_count: %d\n", 36},
};

constexpr FieldLine kPixelQuality[] = {
    {"    tag_id: %d\n", 20},       {"    handle: %d\n", 24},       {"    scan_type: %d\n", 28},
    {"    total_pixels: %d\n", 32}, {"    dirty_pixels: %d\n", 36}, {"    damaged_pixels: %d\n", 40},
    {"    peak_level: %d\n", 44},
};

constexpr FieldLine kPreviewInfo[] = {
    {"    tag_id: %d\n", 20},
    {"    handle: %d\n", 24},
    {"    scan_type: %d\n", 28},
};

constexpr FieldLine kImageInfo[] = {
    {"    handle: %d\n", 20}, {"    scan_type: %d\n", 24}, {"    img_type: %d\n", 28},
    {"    height: %d\n", 32}, {"    width: %d\n", 36},     {"    pitch: %d\n", 40},
    {"    depth: %d\n", 44},  {"    v_res: %d\n", 48},     {"    h_res: %d\n", 52},
};

constexpr FieldLine kCaptureQuality[] = {
    {"    handle: %d\n", 20},
    {"    scan_type: %d\n", 24},
    {"    img_type: %d\n", 28},
    {"    cover_factor: %d\n", 32, unsigned16},
    {"    roll_time: %d\n", 34, unsigned16},
    {"    contact_area: %d\n", 36, unsigned16},
    {"    good_area: %d\n", 38, unsigned16},
    {"    dark_area: %d\n", 40, unsigned16},
    {"    light_area: %d\n", 42, unsigned16},
    {"    smear_area: %d\n", 44, unsigned16},
};

// Shown by where the LEDs are seen, not in the order of the body.
constexpr FieldLine kStatusLeds[] = {
    {"    L4 capture status: %d\n", 60}, {"    Thumbs capture status: %d\n", 68},
    {"    R4 capture status: %d\n", 64}, {"    L4 little finger: %d\n", 20},
    {"    L4 ring finger: %d\n", 24},    {"    L4 middle finger: %d\n", 28},
    {"    L4 index finger: %d\n", 32},   {"    Left thumb: %d\n", 52},
    {"    Right thumb: %d\n", 56},       {"    R4 index finger: %d\n", 36},
    {"    R4 middle finger: %d\n", 40},  {"    R4 ring finger: %d\n", 44},
    {"    R4 little finger: %d\n", 48},
};

constexpr FieldLine kCapture[] = {
    {"    tag_id %d\n", 20},
    {"    handle %d\n", 24},
    {"    scan_type %d\n", 28},
    {"    code %d\n", kProgressOffset},
};

constexpr FieldLine kSubassemblies[] = {{"    count: %d\n", 20}};

constexpr FieldLine kSerialData[] = {{"    ser_port: %d\n", 20}, {"    ser_count: %d\n", 24}};

struct Layout {
    uint32_t code;
    std::span<const FieldLine> lines;
};

constexpr Layout kLayouts[] = {
    {hoxi::STA_VERSION, kVersion},
    {hoxi::STA_IMG_VERSION, kImageVersion},
    {hoxi::STA_DFC_MASK, kMask},
    {hoxi::STA_BUFFER, kBuffer},
    {hoxi::STA_CHANNEL_FIRST, kChannel},
    {hoxi::STA_CHANNEL_SECOND, kChannel},
    {hoxi::STA_IMAGE_XFER, kImageTransfer},
    {hoxi::STA_MEMORY_XFER, kTransfer},
    {hoxi::STA_BITMAP_XFER, kTransfer},
    {hoxi::STA_PLATEN_QUAL, kPixelQuality},
    {hoxi::STA_ROLLER_QUAL, kPixelQuality},
    {hoxi::STA_FLAT_QUAL, kPixelQuality},
    {hoxi::STA_PREV_INFO, kPreviewInfo},
    {hoxi::STA_IMAGE_INFO, kImageInfo},
    {hoxi::STA_CAPTURE_QUAL, kCaptureQuality},
    {hoxi::STA_STATUS_LEDS, kStatusLeds},
    {hoxi::STA_CAPTURE_STATE, kCapture},
    {hoxi::STA_CAPTURE_PROGRESS, kCapture},
    {hoxi::STA_SUBASSEMBLIES, kSubassemblies},
    {hoxi::STA_SERIAL_DATA, kSerialData},
};

}  // namespace

std::span<const FieldLine> fieldLines(uint32_t code) {
    for (const Layout& layout : kLayouts)
        if (layout.code == code)
            return layout.lines;
    return {};
}

}  // namespace scannerlink
