// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

/// The object that a stroke or fill at the point works on, the first that is found of: the topmost selected
/// visible object whose rectangle holds the point, the topmost visible object that the point hits, the
/// topmost selected visible object. Locked objects and those without a picture are passed over.
[[nodiscard]] Ref<CPicObject> FindPaintTarget(const CObjectCanvas& canvas, Point point);

/// Marks the object as selected, as what is worked on is.
void SelectPaintTarget(CPixoluneDoc& document, CPicObject& target);
