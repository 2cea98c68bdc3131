// The exported functions: they look at their pointers and pass on.
#include <algorithm>
#include <cstring>
#include <span>

#include "hoxi/hoxi.h"
#include "platform/clock.h"
#include "simulator/bus.h"
#include "simulator/results.h"

namespace {

using simulator::Call;
using simulator::Function;
using simulator::kBadArgument;
using simulator::kNothingToTransfer;
using simulator::kOk;
using simulator::Scanner;

// One call of a data channel; move(scanner, nowMs) moves the block. The block takes its time, in which other calls go
// on.
template <typename Move>
HoxiResult moveBlock(Function function, uint32_t scanner, uint32_t* transferred, uint32_t* flags, Move move) {
    simulator::BlockResult block;
    int64_t blockMs = 0;
    {
        Call call(function, scanner);
        if (call.result() != kOk) {
            return call.result();
        }
        block = move(call.scanner(), call.nowMs());
        blockMs = call.scanner().plan().blockMs;
    }
    simulator::bus().changed.notify_all();
    if (blockMs > 0) {
        platform::sleepMs(static_cast<uint32_t>(blockMs));
    }
    *transferred = block.moved;
    if (flags != nullptr) {
        *flags = block.flags;
    }
    return block.result;
}

using PutBlock = simulator::BlockResult (Scanner::*)(std::span<const uint8_t>, uint32_t, uint64_t);
using GetBlock = simulator::BlockResult (Scanner::*)(std::span<uint8_t>, uint64_t);

HoxiResult putData(Function function, PutBlock put, uint32_t scanner, const void* data, uint32_t byteCount,
                   uint32_t* transferred, uint32_t flags) {
    if (data == nullptr || transferred == nullptr || byteCount == 0) {
        return kBadArgument;
    }
    *transferred = 0;
    const std::span block(static_cast<const uint8_t*>(data), byteCount);
    return moveBlock(function, scanner, transferred, nullptr,
                     [&](Scanner& device, uint64_t nowMs) { return (device.*put)(block, flags, nowMs); });
}

HoxiResult getData(Function function, GetBlock get, uint32_t scanner, void* buffer, uint32_t byteCount,
                   uint32_t* transferred, uint32_t* flags) {
    if (buffer == nullptr || transferred == nullptr || flags == nullptr || byteCount == 0) {
        return kBadArgument;
    }
    *transferred = 0;
    *flags = 0;
    const std::span block(static_cast<uint8_t*>(buffer), byteCount);
    return moveBlock(function, scanner, transferred, flags,
                     [&](Scanner& device, uint64_t nowMs) { return (device.*get)(block, nowMs); });
}

HoxiResult streamNothing(Function function, uint32_t scanner) {
    const Call call(function, scanner);
    return call.result() != kOk ? call.result() : kNothingToTransfer;
}

}  // namespace

HoxiResult HoxiInitialize(uint32_t, uint32_t* scannerCount) {
    return scannerCount == nullptr ? kBadArgument : simulator::openBus(*scannerCount);
}

HoxiResult HoxiTerminate(void) {
    return simulator::closeBus();
}

HoxiResult HoxiGetBufSize(uint32_t scanner, uint64_t* first, uint64_t* second, uint64_t* dataBufSize) {
    if (first == nullptr || second == nullptr || dataBufSize == nullptr) {
        return kBadArgument;
    }
    Call call(Function::GetBufSize, scanner);
    if (call.result() != kOk) {
        return call.result();
    }
    const simulator::ScannerPlan& plan = call.scanner().plan();
    *first = static_cast<uint64_t>(plan.firstBufferSize);
    *second = static_cast<uint64_t>(plan.secondBufferSize);
    *dataBufSize = static_cast<uint64_t>(plan.dataBufferSize);
    return kOk;
}

HoxiResult HoxiPutCommand(uint32_t scanner, const void* packet, uint32_t length, uint32_t* word) {
    if (packet == nullptr || word == nullptr) {
        return kBadArgument;
    }
    const auto command = simulator::readPacket(std::span(static_cast<const uint8_t*>(packet), length));
    Call call(Function::PutCommand, scanner, command ? command->code : simulator::kNotGiven);
    if (call.result() != kOk) {
        return call.result();
    }
    if (!command) {
        return simulator::kBadPacket;
    }
    call.scanner().execute(*command, call.nowMs());
    simulator::bus().changed.notify_all();
    *word = length;
    return kOk;
}

HoxiResult HoxiGetStatus(uint32_t scanner, void* block, uint32_t size, uint32_t* length) {
    if (block == nullptr || length == nullptr || size == 0) {
        return kBadArgument;
    }
    simulator::Report report{};
    const HoxiResult result = simulator::fetchReport(scanner, report);
    *length = result == kOk ? std::min<uint32_t>(size, simulator::kReportSize) : 0;
    std::memcpy(block, report.data(), *length);
    return result;
}

HoxiResult HoxiSetTimeouts(uint32_t putMs, uint32_t getMs) {
    const Call call(Function::SetTimeouts);
    if (call.result() == kOk) {
        simulator::bus().putTimeoutMs = putMs;
        simulator::bus().getTimeoutMs = getMs;
    }
    return call.result();
}

HoxiResult HoxiBreakEnable(uint32_t enable) {
    const Call call(Function::BreakEnable);
    if (call.result() == kOk) {
        simulator::bus().breakEnabled = enable != 0;
    }
    return call.result();
}

// What scanners have to say waits in them, and outlives a reset of the bus.
HoxiResult HoxiBusReset(void) {
    return Call(Function::BusReset).result();
}

HoxiResult HoxiGetVersion(char* text, uint32_t size) {
    if (text == nullptr || size == 0) {
        return kBadArgument;
    }
    text[0] = '\0';
    const Call call(Function::GetVersion);
    if (call.result() == kOk) {
        const std::string& version = simulator::bus().scenario.library.version;
        text[version.copy(text, size - 1)] = '\0';
    }
    return call.result();
}

HoxiResult HoxiPutMemory(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                         uint32_t flags) {
    return putData(Function::PutMemory, &Scanner::putMemory, scanner, data, byteCount, transferred, flags);
}

HoxiResult HoxiGetMemory(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred, uint32_t* flags) {
    return getData(Function::GetMemory, &Scanner::getMemory, scanner, buffer, byteCount, transferred, flags);
}

HoxiResult HoxiPutImage(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred, uint32_t flags) {
    return putData(Function::PutImage, &Scanner::putImage, scanner, data, byteCount, transferred, flags);
}

HoxiResult HoxiGetImage(uint32_t scanner, void* buffer, uint32_t byteCount, uint32_t* transferred, uint32_t* flags) {
    return getData(Function::GetImage, &Scanner::getImage, scanner, buffer, byteCount, transferred, flags);
}

HoxiResult HoxiPutBitmap(uint32_t scanner, const void* data, uint32_t byteCount, uint32_t* transferred,
                         uint32_t flags) {
    return putData(Function::PutBitmap, &Scanner::putBitmap, scanner, data, byteCount, transferred, flags);
}

HoxiResult HoxiSetVideoBandParams(uint32_t scanner, uint64_t, uint32_t) {
    return streamNothing(Function::SetVideoBandParams, scanner);
}

HoxiResult HoxiStartVideo(uint32_t scanner, uint64_t, uint64_t, uint64_t, uint64_t* bufferSize) {
    return bufferSize == nullptr ? kBadArgument : streamNothing(Function::StartVideo, scanner);
}

HoxiResult HoxiSubmitVideoRequest(uint32_t scanner, void* buffer, uint64_t) {
    return buffer == nullptr ? kBadArgument : streamNothing(Function::SubmitVideoRequest, scanner);
}

HoxiResult HoxiGetVideoResult(uint32_t scanner, void** buffer, uint64_t* context) {
    if (buffer == nullptr || context == nullptr) {
        return kBadArgument;
    }
    return streamNothing(Function::GetVideoResult, scanner);
}

HoxiResult HoxiGetVideoBandPosition(uint32_t scanner, uint64_t* position, void** pixels, uint64_t* lines) {
    if (position == nullptr || pixels == nullptr || lines == nullptr) {
        return kBadArgument;
    }
    return streamNothing(Function::GetVideoBandPosition, scanner);
}

HoxiResult HoxiStopVideo(uint32_t scanner) {
    return streamNothing(Function::StopVideo, scanner);
}
