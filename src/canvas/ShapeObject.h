// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"
#include "history/ObjectListCommand.h"
#include "model/PixoluneDoc.h"
#include "platform/paint/PaintShape.h"

/// Colours a shape as the settings say and puts it on top as the only selected object, under one command.
/// button: the left one begins with the foreground colour, the right one with the background colour.
/// False without coverage, and, with a message, when memory runs out.
bool AddShapeObject(CPixoluneDoc& document, ShapeCoverage coverage, ObjectListKind kind, MouseButton button);
