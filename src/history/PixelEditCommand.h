// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PictureCommand.h"

enum class PixelEditKind { Trim, Delete, Cut, PaintLine, Flood, Rotate };

/// Pixels changed in a way that may also have resized and moved objects.
class CPixelEditCommand final : public CPictureCommand {
public:
    explicit CPixelEditCommand(PixelEditKind kind);
};
