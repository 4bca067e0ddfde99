// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ViewGeometry.h"
#include "platform/dib/PackedDib.h"

/// The parts of the view that are not the picture. `target` shows the client rectangle `area`; what lies
/// outside it is not drawn.

/// Opaque pixels, 0xFFRRGGBB.
struct SurroundingColours {
    uint32_t window = 0xFFF0F0F0;
    uint32_t border = 0xFFE3E3E3; ///< the outer pixel
    uint32_t edge = 0xFFA0A0A0;   ///< the pixel beside the image
};

/// The empty window and the 2-pixel border around the image.
void PaintSurroundings(const BitmapView& target, const Rect& area, const ViewGeometry& geometry,
                       const SurroundingColours& colours);

/// The checkerboard that shows through transparent pixels. origin: the target's corner in the zoomed image,
/// so that the pattern stays fixed to it while scrolling. Every pixel becomes opaque.
void PaintBackdrop(const BitmapView& target, Point origin);

/// A one-pixel frame along the inner edge of a client rectangle, black and white in turns, readable on every
/// background.
void PaintFrame(const BitmapView& target, const Rect& area, const Rect& frame);
