// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/pen/SegmentMask.h"

/// One segment of erasing: takes `transparence`, scaled by the coverage, off the alpha of every covered
/// pixel, down to 0. Colours stay. The mask lies in the picture's own coordinates and inside it.
void ErasePixels(const BitmapView& picture, const CCoverageMask& mask, uint8_t transparence);
