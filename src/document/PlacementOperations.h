// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PlacementCommand.h"
#include "model/PixoluneDoc.h"

/// Lines up the selected visible objects at an edge or the middle of the canvas, or of each other; every
/// kind but Move. Objects that stand right already are left out. Returns whether anything moved; a refusal
/// has been shown.
bool AlignObjects(CPixoluneDoc& document, PlacementKind kind);

/// Records the places of the selected visible objects under "Undo move object(s)", before they move.
/// Refused, with a message, when one of them is locked; false without any.
bool BeginMove(CPixoluneDoc& document);
/// Moves the selected visible objects and reports what changed; nothing is recorded.
void MoveSelected(CPixoluneDoc& document, int dx, int dy);
/// One recorded move, as the arrow keys make it.
bool NudgeObjects(CPixoluneDoc& document, int dx, int dy);
