// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Writes an animated cursor with one step per visible object, bottom first, each drawn alone on the canvas.
/// All steps last as long as the canvas delay says, at least a sixtieth of a second. False, and the old file
/// as it was, on failure and when no object is visible.
[[nodiscard]] bool SaveAnimatedCursorFile(const CObjectCanvas& canvas, const std::filesystem::path& path,
                                          Point hotSpot, IProgress* progress);
