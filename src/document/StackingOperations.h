// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/StackingCommand.h"
#include "model/PixoluneDoc.h"

/// Restacks the objects whose selected flag is set, visible or not. To front and to back move them until
/// one of them stands at the end; those separated from it keep their distance. Each returns whether it
/// changed the document; a refusal has been shown.
bool Restack(CPixoluneDoc& document, StackingKind kind);

/// Puts the objects together, in their order, below what stands at `place` from the bottom (on top of all at
/// the number of objects), as a drag in a list does. Recorded as a move forward or backward, whichever way
/// the lowest of them goes. False when nothing changes its place.
bool MoveObjectsTo(CPixoluneDoc& document, const CObjectList& moved, size_t place);
