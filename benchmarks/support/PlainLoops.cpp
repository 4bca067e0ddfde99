// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PlainLoops.h"

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace plain {

void OverOpaque(uint8_t* destination, const uint8_t* source, size_t pixels)
{
    for (size_t i = 0; i < pixels; ++i, destination += 4, source += 4) {
        const int alpha = source[3];
        for (int c = 0; c < 4; ++c) {
            destination[c] = static_cast<uint8_t>((source[c] * alpha + destination[c] * (255 - alpha)) / 255);
        }
    }
}

void OverWithAlpha(uint8_t* destination, const uint8_t* source, size_t pixels)
{
    for (size_t i = 0; i < pixels; ++i, destination += 4, source += 4) {
        const int below = (255 - source[3]) * destination[3];
        const int alpha = 255 - (255 - destination[3]) * (255 - source[3]) / 255;
        for (int c = 0; c < 3; ++c) {
            const int sum = below * destination[c] / 255 + source[3] * source[c];
            destination[c] = static_cast<uint8_t>(alpha == 0 ? 0 : std::min(255, sum / alpha));
        }
        destination[3] = static_cast<uint8_t>(alpha);
    }
}

void StreamingCopy(uint8_t* destination, const uint8_t* source, size_t bytes)
{
#ifdef __SSE2__
    constexpr size_t kVector = sizeof(__m128i);
    const size_t head =
        std::min(bytes, (kVector - reinterpret_cast<uintptr_t>(destination) % kVector) % kVector);
    std::memcpy(destination, source, head);
    size_t at = head;
    for (; at + kVector <= bytes; at += kVector) {
        _mm_stream_si128(reinterpret_cast<__m128i*>(destination + at),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + at)));
    }
    _mm_sfence();
    std::memcpy(destination + at, source + at, bytes - at);
#else
    std::memcpy(destination, source, bytes);
#endif
}

} // namespace plain
