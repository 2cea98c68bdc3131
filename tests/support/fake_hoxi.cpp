#include "support/fake_hoxi.h"

#include <algorithm>
#include <cstring>

#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"

namespace support {
namespace {

FakeHoxi fake;

uint32_t record(HoxiCall call) {
    const auto rule = fake.results.find(call.name);
    fake.calls.push_back(std::move(call));
    return rule != fake.results.end() ? rule->second : 0;
}

std::vector<uint8_t> bytesOf(const void* data, uint32_t count) {
    const auto* begin = static_cast<const uint8_t*>(data);
    return {begin, begin + count};
}

}  // namespace

FakeHoxi& fakeHoxi() {
    return fake;
}

void resetFakeHoxi() {
    fake = FakeHoxi{};
}

std::vector<std::vector<uint8_t>> packetsPut() {
    std::vector<std::vector<uint8_t>> packets;
    for (const HoxiCall& call : fake.calls)
        if (call.name == "PutCommand")
            packets.push_back(call.bytes);
    return packets;
}

std::vector<std::string> callNames() {
    std::vector<std::string> names;
    for (const HoxiCall& call : fake.calls)
        names.push_back(call.name);
    return names;
}

}  // namespace support

using support::fake;
using support::record;

HoxiResult HoxiInitialize(uint32_t value, uint32_t* scannerCount) {
    *scannerCount = fake.scannerCount;
    if (fake.onInitialize)
        fake.onInitialize();
    return record({"Initialize", {value}});
}

HoxiResult HoxiTerminate(void) {
    return record({"Terminate", {}});
}

HoxiResult HoxiGetBufSize(uint32_t scanner, uint64_t* first, uint64_t* second, uint64_t* dataBufSize) {
    *first = 1;
    *second = 2;
    *dataBufSize = fake.dataBufSize;
    const uint32_t result = record({"GetBufSize", {scanner}});
    const auto rule = fake.results.find("GetBufSize" + std::to_string(scanner));
    return rule != fake.results.end() ? rule->second : result;
}

HoxiResult HoxiPutCommand(uint32_t scanner, const void* packet, uint32_t length, uint32_t* word) {
    *word = 0xDEADBEEF;
    const uint32_t result = record({"PutCommand", {scanner, length}, support::bytesOf(packet, length)});
    return fake.onPutCommand ? fake.onPutCommand(scanner, support::bytesOf(packet, length)) : result;
}

HoxiResult HoxiGetStatus(uint32_t scanner, void* block, uint32_t size, uint32_t* length) {
    *length = size;
    if (!fake.onGetStatus)
        return hoxi::kResultLibraryClosed;
    return fake.onGetStatus(scanner, *static_cast<scannerlink::Report*>(block));
}

HoxiResult HoxiSetTimeouts(uint32_t putMs, uint32_t getMs) {
    return record({"SetTimeouts", {putMs, getMs}});
}

HoxiResult HoxiBreakEnable(uint32_t enable) {
    return record({"BreakEnable", {enable}});
}

HoxiResult HoxiBusReset(void) {
    return record({"BusReset", {}});
}

// As a careless library would: no zero when the text fills the buffer.
HoxiResult HoxiGetVersion(char* text, uint32_t size) {
    std::strncpy(text, fake.version.c_str(), size);
    return record({"GetVersion", {size}});
}

namespace support {
namespace {

uint32_t putData(const char* name, uint32_t scanner, const void* data, uint32_t count, uint32_t* moved,
                 uint32_t flags) {
    FakeHoxi::Channel call{record({name, {scanner, count, flags}, bytesOf(data, count)}), count, flags};
    if (fake.onTransfer)
        fake.onTransfer(name, call);
    *moved = call.moved;
    return call.result;
}

uint32_t getData(const char* name, uint32_t scanner, void* buffer, uint32_t count, uint32_t* moved, uint32_t* flags) {
    const auto left = static_cast<uint32_t>(fake.toGive.size() - fake.given);
    FakeHoxi::Channel call{record({name, {scanner, count}}), std::min(count, left), count >= left ? 2u : 0u};
    if (fake.onTransfer)
        fake.onTransfer(name, call);
    const uint32_t copied = std::min({call.moved, count, left});
    if (copied > 0)
        std::memcpy(buffer, fake.toGive.data() + fake.given, copied);
    fake.given += copied;
    *moved = call.moved;
    *flags = call.flags;
    return call.result;
}

}  // namespace
}  // namespace support

HoxiResult HoxiPutMemory(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                         uint32_t flags) {
    return support::putData("PutMemory", scanner, data, byteCount, transferred, flags);
}

HoxiResult HoxiPutImage(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred, uint32_t flags) {
    return support::putData("PutImage", scanner, data, byteCount, transferred, flags);
}

HoxiResult HoxiPutBitmap(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                         uint32_t flags) {
    return support::putData("PutBitmap", scanner, data, byteCount, transferred, flags);
}

HoxiResult HoxiGetMemory(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred, uint32_t* flags) {
    return support::getData("GetMemory", scanner, buffer, byteCount, transferred, flags);
}

HoxiResult HoxiGetImage(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred, uint32_t* flags) {
    return support::getData("GetImage", scanner, buffer, byteCount, transferred, flags);
}
