// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/FillDib.h"

#include "platform/dib/Pixel.h"

void FillDib(CPackedDib& dib, uint32_t colour, uint8_t alpha)
{
    const uint32_t pixel =
        (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF) | uint32_t{alpha} << 24;
    for (int y = 0; y < dib.Height(); ++y) {
        uint8_t* row = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x)
            StorePixel(row + ptrdiff_t{x} * 4, pixel);
    }
}
