// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PictureSnapshot.h"
#include "model/RasterImage.h"

#include <optional>

class CCoverageMask;

/// Painting into a picture as it stands. Keeps the old pixels of what has been painted over, and little more,
/// until the stroke is done. When something else is about to change the picture meanwhile, the stroke puts
/// everything back first and paints no more.
class CInPlaceStroke final : private IPicturePainter {
public:
    explicit CInPlaceStroke(Ref<CRasterImage> image);
    ~CInPlaceStroke();
    CInPlaceStroke(const CInPlaceStroke&) = delete;
    CInPlaceStroke& operator=(const CInPlaceStroke&) = delete;

    /// Keeps the pixels of a rectangle inside the picture, which is then about to be painted. False when
    /// memory runs out, then and ever after, or something else has changed the picture.
    [[nodiscard]] bool Prepare(const Rect& rect);
    /// The same with the pixels that a mask in the picture's own coordinates may cover.
    [[nodiscard]] bool Prepare(const CCoverageMask& mask);
    [[nodiscard]] BitmapView Pixels() const { return ViewOf(m_image->AnnouncedDib()); }
    /// Whether nothing else has changed the picture.
    [[nodiscard]] bool IsIntact() const { return m_isIntact; }
    [[nodiscard]] bool HasPainted() const { return m_isIntact && m_old.HasTiles(); }
    /// What the stroke has changed; none when memory runs out.
    [[nodiscard]] std::optional<CPixelChanges> Changes();
    /// Puts everything back.
    void Restore();

private:
    void PutBack() override;

    Ref<CRasterImage> m_image;
    CPictureSnapshot m_old;
    bool m_isIntact = true;
};
