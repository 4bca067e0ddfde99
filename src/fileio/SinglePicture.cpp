// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/SinglePicture.h"

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
    auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(std::move(dib), std::string()));
    object->visible = true;
    canvas.objects.Append(std::move(object));
    return true;
}
