// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/JoinPictures.h"
#include "history/PixelEditCommand.h"
#include "model/PixoluneDoc.h"

/// Gives an object another picture at another place, and records it.
void ReplaceObjectPicture(CPixoluneDoc& document, const Ref<CPicObject>& object, PlacedPicture picture,
                          PixelEditKind kind);

/// Joins a picture with an object's own, which grows where it must, and records it. False when memory runs
/// out; nothing has changed then.
[[nodiscard]] bool JoinOntoObject(CPixoluneDoc& document, const Ref<CPicObject>& object,
                                  const PlacedPicture& upper, JoinRule rule, PixelEditKind kind);
