// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/TransformCommand.h"
#include "model/PixoluneDoc.h"

/// The checks that every image operation begins with: an object is visible, and at least one is visible and
/// selected. Says which is not so.
[[nodiscard]] bool RequireTransformTargets(const CPixoluneDoc& document);

/// Runs an operation that asks nothing (Gray, Negative and the mirrors) on the visible selected objects.
/// Whether it was done; a refusal has been shown. An object whose result cannot be held loses its picture.
bool RunImmediateTransform(CPixoluneDoc& document, TransformKind kind);
