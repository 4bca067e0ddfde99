// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Reads every frame of an animated cursor, the first image of each, in the order of the file. The canvas
/// delay comes from the first rate. False, with nothing left on the canvas, unless there are exactly as many
/// frames as the header says.
[[nodiscard]] bool LoadAnimatedCursorFile(CObjectCanvas& canvas, const std::filesystem::path& path,
                                          IProgress* progress);
