// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <optional>

/// A 32-bit picture and where its corner stands on the canvas.
struct PlacedPicture {
    CPackedDib dib;
    Point position;

    [[nodiscard]] Rect Rectangle() const { return dib.IsEmpty() ? Rect() : Rect::At(position, dib.Size()); }
};

/// What becomes of an old pixel where the upper picture has something (alpha above 0).
enum class JoinRule {
    Replace, ///< the upper pixel stands in its place
    Over     ///< the upper pixel is composited over it
};

/// One picture that covers both, transparent where there is neither. Where the upper picture has nothing the
/// lower one's pixels stay byte for byte. Empty when the result is too large or memory runs out.
[[nodiscard]] PlacedPicture JoinPictures(const CPackedDib& lower, Point lowerPosition,
                                         const PlacedPicture& upper, JoinRule rule);

/// The same in place: `upper` lies inside the lower picture.
void JoinInto(const BitmapView& lower, Point lowerPosition, const PlacedPicture& upper, JoinRule rule);

/// The smallest part with all pixels that have something; empty without one. None when memory runs out.
[[nodiscard]] std::optional<PlacedPicture> Trimmed(const PlacedPicture& picture);
