// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Deterministic pictures, made once and kept. 1 megapixel is 1024 x 1024, 4 are 2048 x 2048, 12 are
/// 4000 x 3000.

/// Continuous tones with grain; 13 % of the pixels are clear, 13 % opaque, the alpha of the rest lies
/// between and changes slowly.
const CPackedDib& PhotoPicture(int megapixels);
/// Another photo, opaque throughout.
const CPackedDib& BackdropPicture(int megapixels);
/// 24 flat colours in hard-edged shapes on a clear ground; the shapes are opaque or half so.
const CPackedDib& FlatArtPicture(int megapixels);

double PixelsOf(int megapixels);

/// A rectangle of a picture as one of its own.
CPackedDib CutOut(const CPackedDib& dib, int x, int y, int width, int height);
/// The colours multiplied by the alpha, as painters with premultiplied pixels want them.
CPackedDib Premultiplied(const CPackedDib& dib);
