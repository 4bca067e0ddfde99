// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Appends every frame of every video stream, one stream after another, as an object at (0, 0). The canvas
/// takes its size from the main header, which must stand at the very front, and its delay from the stream of
/// the last frame. False for a file without that header and for one that cannot be opened; a frame that
/// cannot be decoded ends nothing, and what was imported by the end stays.
[[nodiscard]] bool LoadAviFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress);
