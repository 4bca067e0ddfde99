// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/AnimationExport.h"

/// Writes an animated GIF: of each frame only what changed; alpha below 128 is transparent. False, and the
/// old file as it was, on failure and for sides that the format cannot state.
[[nodiscard]] bool SaveGifAnimation(const CAnimationFrames& frames, const std::filesystem::path& path,
                                    const AnimationOptions& options, IProgress* progress);
