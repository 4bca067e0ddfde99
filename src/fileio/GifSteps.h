// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/AnimationFrames.h"

#include <cstdint>
#include <vector>

/// What becomes of a frame's rectangle before the next frame.
inline constexpr uint8_t kFrameStays = 1;
inline constexpr uint8_t kFrameIsCleared = 2; ///< the only way to clear pixels

/// How one frame of an animation is stored: only the rectangle that differs from what is on the screen by
/// then, and what becomes of that rectangle afterwards.
struct GifStep {
    Rect rect;
    uint8_t disposal = kFrameStays;
};

/// The frames of an animation as GIF can show them, every pixel opaque or clear: alpha from 128 on is opaque.
class CGifSteps {
public:
    explicit CGifSteps(const CAnimationFrames& frames) : m_frames(frames) {}

    /// Looks at all frames; false when memory runs out or there is none.
    [[nodiscard]] bool Plan();
    [[nodiscard]] const std::vector<GifStep>& Steps() const { return m_steps; }
    /// A pixel of some frame is clear.
    [[nodiscard]] bool HasClearPixels() const { return m_hasClearPixels; }

    enum class Unchanged { Stored, Cleared };
    /// What is stored of a frame: its rectangle, 32 bits per pixel, alpha 0 where nothing is drawn. Pixels
    /// that are on the screen already may be left out. Empty when memory runs out.
    [[nodiscard]] CPackedDib Picture(size_t index, Unchanged unchanged) const;

private:
    /// The frame with alpha 255, or 0 and no colour.
    [[nodiscard]] CPackedDib HardFrame(size_t index) const;
    /// What is on the screen when a frame is drawn: the frame before, disposed of.
    [[nodiscard]] static CPackedDib Disposed(CPackedDib frame, const GifStep& step);

    const CAnimationFrames& m_frames;
    std::vector<GifStep> m_steps;
    bool m_hasClearPixels = false;
};

/// The smallest rectangle around the pixels that differ between two 32-bit pictures of one size.
[[nodiscard]] Rect ChangedBounds(const CPackedDib& before, const CPackedDib& after);
