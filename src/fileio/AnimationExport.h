// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/AnimationFrames.h"
#include "model/PixoluneDoc.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>
#include <span>
#include <string_view>

enum class AnimationPalette { OneForAll, OnePerFrame };

inline constexpr int kMostPlays = 65535;
inline constexpr int kMostFrameDelay = 65535;

struct AnimationOptions {
    int plays = 0;  ///< times the animation is shown, 0: without end; at most kMostPlays
    int delay = 10; ///< hundredths of a second that each frame is shown; at most kMostFrameDelay
    AnimationPalette palette = AnimationPalette::OneForAll; ///< of a GIF
};

/// With the canvas's delay.
[[nodiscard]] AnimationOptions DefaultAnimationOptions(const CObjectCanvas& canvas);

/// One row a format that holds animations.
struct AnimationFormatRow {
    std::string_view name;
    std::string_view extensions; ///< upper case, separated by blanks; the first one is the usual one
    bool hasPalette;
    bool (*write)(const CAnimationFrames& frames, const std::filesystem::path& path,
                  const AnimationOptions& options, IProgress* progress);
};

[[nodiscard]] std::span<const AnimationFormatRow> AnimationFormatTable();
/// By the path's extension; none for one that holds no animations.
[[nodiscard]] const AnimationFormatRow* FindAnimationFormat(const std::filesystem::path& path);

/// Writes all visible objects as frames, bottom first, in the format of the path's extension. The document
/// stays as it is; false, with a message, when that fails, and the old file is then whole.
bool ExportAnimation(const CPixoluneDoc& document, const std::filesystem::path& path,
                     const AnimationOptions& options);
