// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/RasterImage.h"
#include "platform/geometry/Geometry.h"

/// A picture placed on the canvas.
class CPicObject final : public CSharedObj {
public:
    CPicObject() = default;
    explicit CPicObject(Ref<CRasterImage> shown) : image(std::move(shown)) {}

    /// The picture's size, or the fallback size without one.
    [[nodiscard]] ::Size Size() const;
    [[nodiscard]] Rect Rectangle() const { return Rect::At({x, y}, Size()); }
    /// Whether the point is on the object. The vertical test begins at 0, not at the object's top, as
    /// users of the hit test rely on; a pixel above the picture reads as transparent anyway.
    [[nodiscard]] bool IsHit(Point point) const;
    [[nodiscard]] bool IsSelected() const { return image && image->selected; }
    /// Selected and visible: what document operations, filters and tools act on.
    [[nodiscard]] bool IsActive() const { return visible && IsSelected(); }
    void SetSelected(bool selected)
    {
        if (image)
            image->selected = selected;
    }

    ::Size fallbackSize;
    int x = 0;
    int y = 0;
    bool locked = false;
    Ref<CRasterImage> image;
    bool visible = false;
    uint8_t transparency = 0; ///< subtracted from every pixel's alpha
};
