// The conversion handle: what a conversion keeps between two slices of its text.
#pragma once

#include <cstdint>

#include "tessera.h"

struct TSConversion {
    static constexpr int kMaxChar = 4;

    TSLocale* sourceLocale;
    std::uint8_t partialChar[kMaxChar]; // the bytes so far of a character that the input ended in
    std::uint8_t sourceState;
    std::uint8_t partialCount;
    TSLocale* targetLocale;
    std::uint8_t pendingOutput[kMaxChar + 1]; // bytes that did not fit, with their shift byte
    std::uint8_t targetState;
    std::uint8_t pendingCount;
};
