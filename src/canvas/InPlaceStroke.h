// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/GrowingPicture.h"
#include "model/RasterImage.h"

/// Painting into a picture as it stands. Keeps the old pixels of what has been painted over, and no more,
/// until the stroke is done. When something else gives the object another picture meanwhile, that one is left
/// alone.
class CInPlaceStroke {
public:
    explicit CInPlaceStroke(Ref<CRasterImage> image);

    /// Keeps the pixels of a rectangle inside the picture, which is then about to be painted. False when
    /// memory runs out, or another picture stands there by now.
    [[nodiscard]] bool Prepare(const Rect& rect);
    /// Whether the image still holds the picture that it held at first.
    [[nodiscard]] bool IsIntact() const;
    [[nodiscard]] BitmapView Pixels() const { return ViewOf(m_image->MutableDib()); }
    [[nodiscard]] bool HasPainted() const { return !m_old.IsEmpty() && IsIntact(); }
    /// Ends the painting: the whole picture as it was before. Empty when memory runs out.
    [[nodiscard]] CPackedDib TakeOriginal();
    /// Puts everything back.
    void Restore();

private:
    void CopyOldInto(const BitmapView& picture) const;

    Ref<CRasterImage> m_image;
    const uint8_t* m_block; ///< the picture's; compared only
    CGrowingPicture m_old;
};
