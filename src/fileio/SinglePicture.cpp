// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/SinglePicture.h"

#include "fileio/LoadedPicture.h"
#include "model/DibOperations.h"

bool AdoptSinglePicture(CObjectCanvas& canvas, CPackedDib dib)
{
    if (dib.IsEmpty())
        return false;
    if (dib.BitCount() != 32)
        dib = ConvertTo32Bits(dib);
    if (dib.IsEmpty())
        return false;
    canvas.width = dib.Width();
    canvas.height = dib.Height();
    canvas.backgroundIndex = 0;
    canvas.transparentIndex = 0;
    AppendPicture(canvas, std::move(dib));
    return true;
}
