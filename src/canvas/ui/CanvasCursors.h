// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ToolMode.h"

#include <QCursor>

/// The pointer of a shape, drawn from the icon family for screens with that many device pixels a pixel.
[[nodiscard]] QCursor CanvasCursor(CursorShape shape, qreal devicePixelRatio);
