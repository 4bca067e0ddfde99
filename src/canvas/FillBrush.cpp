// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FillBrush.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

CFillBrush::CFillBrush(const Paint& paint, Mode mode)
    : m_pixel(paint.Pixel()), m_replaces(mode == Mode::Replace || paint.alpha == 255)
{
    if (m_replaces)
        return;
    for (uint32_t value = 0; value < 256; ++value) {
        const uint32_t result = Over(0xFF000000 | value * 0x010101, m_pixel);
        for (size_t channel = 0; channel < 3; ++channel)
            m_overOpaque[channel][value] = static_cast<uint8_t>(result >> (8 * channel));
    }
}

void CFillBrush::PaintRun(uint8_t* pixels, int count) const
{
    if (m_replaces) {
        std::fill_n(reinterpret_cast<uint32_t*>(pixels), count, m_pixel);
        return;
    }
    for (; count > 0; --count, pixels += 4) {
        if (pixels[3] == 255) {
            for (size_t channel = 0; channel < 3; ++channel)
                pixels[channel] = m_overOpaque[channel][pixels[channel]];
            continue;
        }
        uint32_t pixel = 0;
        std::memcpy(&pixel, pixels, sizeof pixel);
        pixel = Over(pixel, m_pixel);
        std::memcpy(pixels, &pixel, sizeof pixel);
    }
}
