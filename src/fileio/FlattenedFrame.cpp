// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/FlattenedFrame.h"

#include "model/Compositing.h"
#include "model/FillDib.h"

CPackedDib FlattenOver(const CObjectCanvas& canvas, uint32_t colour)
{
    const CPackedDib frame = Flatten(canvas);
    CPackedDib filled =
        frame.IsEmpty() ? CPackedDib() : CPackedDib::CreateForOverwrite(frame.Width(), frame.Height());
    if (filled.IsEmpty())
        return filled;
    FillDib(filled, colour, 255);
    CompositeOver(ViewOf(filled), {0, 0}, frame, {0, 0}, 0);
    return filled;
}
