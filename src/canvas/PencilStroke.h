// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FillBrush.h"
#include "platform/dib/PackedDib.h"
#include "platform/pen/SegmentMask.h"

/// One segment of a pencil stroke. The mask's coverage scales the opacity, so that hard and soft segments are
/// one rule.

/// Adds the coverage to the alpha bytes of a layer, up to 255: where segments overlap, it accumulates. The
/// layer's colours stay as they are. corner: the layer's, in the mask's coordinates; it holds all of the
/// mask.
void AddToLayer(const BitmapView& layer, Point corner, const CCoverageMask& mask, uint8_t opacity);

/// Blends the paint's colour over pixels that have something; their alpha stays, and pixels with alpha 0 stay
/// untouched. The mask lies in the picture's own coordinates and inside it.
void PaintOntoPixels(const BitmapView& picture, const CCoverageMask& mask, const Paint& paint);
