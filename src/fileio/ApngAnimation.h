// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/AnimationExport.h"

/// Writes an animated PNG with all of its alpha: of each frame only what changed. Programs that know no
/// animations show the first frame. False, and the old file as it was, on failure.
[[nodiscard]] bool SaveApngAnimation(const CAnimationFrames& frames, const std::filesystem::path& path,
                                     const AnimationOptions& options, IProgress* progress);
