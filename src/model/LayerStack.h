// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AlphaTiles.h"
#include "model/BlendRows.h"
#include "model/Placement.h"
#include "platform/dib/PackedDib.h"

#include <span>

/// A 32-bit picture as it is to be drawn on one destination. `blend` must put nothing but the source pixel
/// where the source is opaque and the transparency 0.
struct PictureLayer {
    ConstBitmapView pixels;
    Placement placement;
    uint8_t transparency = 0;
    RowBlend blend = BlendRowWeighted;
    const CAlphaTiles* alphas = nullptr; ///< of the picture, if they are kept
};

/// Draws the layers, the first one lowest. The destination is cut into pieces that stay in the cache while
/// every layer passes over them, beginning with the topmost layer that hides all below; the pieces are
/// spread over the processors where that pays.
void DrawLayers(const BitmapView& destination, std::span<const PictureLayer> layers);
