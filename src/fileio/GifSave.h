// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Writes the frame as one GIF picture of at most 256 colours; alpha below 128 is transparent. False, and the
/// old file as it was, on failure and for sides that the format cannot state.
[[nodiscard]] bool SaveGifFile(const CObjectCanvas& canvas, const std::filesystem::path& path,
                               bool isInterlaced, IProgress* progress);
