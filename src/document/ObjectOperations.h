// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/ObjectListCommand.h"
#include "model/PixoluneDoc.h"

#include <span>

/// The commands of the Object menu that make and remove objects. Each returns whether it changed the
/// document; a refusal has been shown to the user and changed nothing.

/// Puts a 32-bit picture on top as a visible object, the only one selected, under one command.
void AddObject(CPixoluneDoc& document, ObjectListKind kind, CPackedDib dib, Point corner,
               uint8_t transparency);
/// A transparent object of the canvas's size on top, the only one selected.
bool NewObject(CPixoluneDoc& document);
/// Copies of every object whose selected flag is set, visible and selected, together above the topmost.
bool DuplicateObjects(CPixoluneDoc& document);
/// Removes every object whose selected flag is set, visible or not.
bool DeleteObjects(CPixoluneDoc& document);
/// Replaces the selected visible objects by one that shows the same, in the place of the lowest.
bool CombineObjects(CPixoluneDoc& document);
/// Puts the flattened frame on top as one object and hides all others.
bool MakeFrame(CPixoluneDoc& document);
/// Cuts fully transparent borders off the selected visible objects.
bool TrimObjects(CPixoluneDoc& document);
/// Changes the canvas size; the objects stay as they are. Nothing happens at the current size.
bool ResizeCanvas(CPixoluneDoc& document, Size size);
