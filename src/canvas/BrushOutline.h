// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionOutline.h"
#include "platform/pen/SegmentMask.h"

/// The smallest rectangle of document pixels around one dab of the pen.
[[nodiscard]] Rect DabBox(Point point, const Pen& pen);

/// The outline of the pixels that one dab of the pen covers; of a soft pen those that it covers by half or
/// more. None when memory runs out.
[[nodiscard]] CSelectionOutline BrushOutline(Point point, const Pen& pen);
