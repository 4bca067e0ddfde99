// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Writes one layer per object, bottom first, with its name, place, visibility and opacity, and the frame as
/// the merged picture, so that programs that know no layers can show the file, too. Samples are 8 bits, rows
/// packed. False, and the old file as it was, on failure and when a side of the canvas exceeds 30000 pixels.
[[nodiscard]] bool SavePsdFile(const CObjectCanvas& canvas, const std::filesystem::path& path,
                               IProgress* progress);
