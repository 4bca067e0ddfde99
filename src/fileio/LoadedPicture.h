// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

/// Puts a 32-bit picture that was read on top of the canvas: visible, without a name, which the document
/// gives.
inline CPicObject& AppendPicture(CObjectCanvas& canvas, CPackedDib dib, Point position = {})
{
    auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(std::move(dib), std::string()));
    object->x = position.x;
    object->y = position.y;
    object->visible = true;
    canvas.objects.Append(object);
    return *object;
}
