// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifTransparency.h"

#include <cstring>

CPackedDib TakeTransparency(CPackedDib& frame, bool& outOfMemory)
{
    uint32_t cover = 0;
    bool isTransparent = false;
    for (int y = 0; y < frame.Height(); ++y) {
        for (int x = 0; x < frame.Width(); ++x) {
            const uint8_t* pixel = frame.Row(y) + ptrdiff_t{x} * 4;
            if (pixel[3] < kLowestOpaqueAlpha)
                isTransparent = true;
            else if (cover == 0)
                std::memcpy(&cover, pixel, sizeof cover);
        }
    }
    if (!isTransparent)
        return {};
    CPackedDib mask = CPackedDib::Create(frame.Width(), frame.Height(), 1);
    outOfMemory = mask.IsEmpty();
    for (int y = 0; y < frame.Height() && !outOfMemory; ++y) {
        uint8_t* bits = mask.Row(y);
        for (int x = 0; x < frame.Width(); ++x) {
            uint8_t* pixel = frame.Row(y) + ptrdiff_t{x} * 4;
            if (pixel[3] >= kLowestOpaqueAlpha)
                continue;
            bits[x / 8] = static_cast<uint8_t>(bits[x / 8] | 0x80 >> x % 8);
            std::memcpy(pixel, &cover, sizeof cover);
        }
    }
    return mask;
}
