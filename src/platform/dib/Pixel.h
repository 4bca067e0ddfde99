// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

/// Alpha 255 in a 32-bit pixel, whose bytes are blue, green, red, alpha from the lowest to the highest.
inline constexpr uint32_t kOpaquePixel = 0xFF000000u;

/// A 32-bit pixel anywhere in memory.
[[nodiscard]] inline uint32_t LoadPixel(const uint8_t* at)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, at, sizeof pixel);
    return pixel;
}

inline void StorePixel(uint8_t* at, uint32_t pixel)
{
    std::memcpy(at, &pixel, sizeof pixel);
}
