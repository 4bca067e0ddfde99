// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/BlendRows.h"
#include "model/Placement.h"
#include "platform/dib/PackedDib.h"

#include <span>

/// A 32-bit picture as it is to be drawn on one destination.
struct PictureLayer {
    ConstBitmapView pixels;
    uint8_t transparency = 0;
    Placement placement;
};

/// Draws the layers, the first one lowest, each row by `blend`.
void DrawLayers(const BitmapView& destination, std::span<const PictureLayer> layers, RowBlend blend);
