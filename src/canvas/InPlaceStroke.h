// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/GrowingPicture.h"
#include "model/RasterImage.h"

#include <optional>

/// Painting into a picture as it stands. Keeps the old pixels of what has been painted over, and no more,
/// until the stroke is done. When something else is about to change the picture meanwhile, the stroke puts
/// everything back first and paints no more.
class CInPlaceStroke final : private IPicturePainter {
public:
    explicit CInPlaceStroke(Ref<CRasterImage> image);
    ~CInPlaceStroke();
    CInPlaceStroke(const CInPlaceStroke&) = delete;
    CInPlaceStroke& operator=(const CInPlaceStroke&) = delete;

    /// Keeps the pixels of a rectangle inside the picture, which is then about to be painted. False when
    /// memory runs out, or something else has changed the picture.
    [[nodiscard]] bool Prepare(const Rect& rect);
    [[nodiscard]] BitmapView Pixels() const { return ViewOf(m_image->AnnouncedDib()); }
    /// Whether nothing else has changed the picture.
    [[nodiscard]] bool IsIntact() const { return m_isIntact; }
    [[nodiscard]] bool HasPainted() const { return m_isIntact && !m_old.IsEmpty(); }
    /// What the stroke has changed; none when memory runs out.
    [[nodiscard]] std::optional<CPixelChanges> Changes() const;
    /// Puts everything back.
    void Restore();

private:
    void PutBack() override;

    Ref<CRasterImage> m_image;
    CGrowingPicture m_old;
    bool m_isIntact = true;
};
