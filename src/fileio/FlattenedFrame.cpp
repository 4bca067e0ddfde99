// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/FlattenedFrame.h"

#include "model/Compositing.h"

#include <cstring>

CPackedDib FlattenOver(const CObjectCanvas& canvas, uint32_t colour)
{
    const CPackedDib frame = Flatten(canvas);
    CPackedDib filled =
        frame.IsEmpty() ? CPackedDib() : CPackedDib::CreateForOverwrite(frame.Width(), frame.Height());
    if (filled.IsEmpty())
        return filled;
    const uint32_t pixel = (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF) | 0xFF000000;
    for (int y = 0; y < filled.Height(); ++y) {
        for (int x = 0; x < filled.Width(); ++x)
            std::memcpy(filled.Row(y) + ptrdiff_t{x} * 4, &pixel, sizeof pixel);
    }
    CompositeOver(ViewOf(filled), {0, 0}, frame, {0, 0}, 0);
    return filled;
}
