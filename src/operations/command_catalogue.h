// The operations that send one command packet and are done; completion and results arrive as status reports. Each
// takes its tag before its arguments, so that a tag is used up even when an argument is missing and nothing is sent.
// Main thread only.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "operations/command_layouts.h"

namespace operations {

// Sends the packet of this layout. False when the library refused it, which has been told.
bool sendLayout(const CommandLayout& layout, uint32_t tag, std::span<const uint32_t> arguments);

// Takes the next tag, fills all the arguments from the line and sends the packet; nothing when one is missing.
void sendWithArguments(const CommandLayout& layout, std::span<uint32_t> arguments);

// The handler of an operation whose arguments are all mandatory and go into the payload in the order of the line.
template <const CommandLayout& layout>
void sendRow() {
    static_assert(isSound(layout));
    std::array<uint32_t, argumentCount(layout)> arguments{};
    sendWithArguments(layout, arguments);
}

// Operations with rules of their own.
void displayImage();
void querySwitch();
void transmitSerial();
void setStatusLeds();

}  // namespace operations
