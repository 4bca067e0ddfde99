// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

/// Zoom factors: z >= 1 magnifies by z, z <= -2 reduces to 1/|z|; 0 and -1 never stand.
inline constexpr int kMinZoom = -8;
inline constexpr int kMaxZoom = 8;
[[nodiscard]] constexpr bool IsZoom(int zoom)
{
    return (zoom >= kMinZoom && zoom <= -2) || (zoom >= 1 && zoom <= kMaxZoom);
}
/// The next larger or smaller factor; the same at the end of the range.
[[nodiscard]] constexpr int NextZoomIn(int zoom)
{
    return zoom == kMaxZoom ? zoom : zoom == -2 ? 1 : zoom + 1;
}
[[nodiscard]] constexpr int NextZoomOut(int zoom)
{
    return zoom == kMinZoom ? zoom : zoom == 1 ? -2 : zoom - 1;
}

/// Where the picture stands in the window. Document points are pixels of the picture; canvas points are
/// those of the zoomed picture with its margin, before scrolling; client points are the window's. Integer
/// arithmetic, divisions truncating toward zero.
struct ViewGeometry {
    /// Empty space around the image on every side.
    static constexpr int kMargin = 2;

    Size document;
    int zoom = 1;
    Size client;
    Point scroll;

    [[nodiscard]] Size ScaledSize() const;
    /// The scaled size with the margin on every side.
    [[nodiscard]] Size Extent() const;
    /// What can be scrolled over: the larger of extent and client.
    [[nodiscard]] Size ScrollRange() const;
    /// The scroll position nearest to `wanted` that shows no space beyond the range.
    [[nodiscard]] Point ClampedScroll(Point wanted) const;
    /// From the canvas's corner to the image's; centres the image in a larger window.
    [[nodiscard]] Point MarginOffset() const;
    /// The image inside the scrolled canvas, in canvas pixels.
    [[nodiscard]] Rect ImageRect() const;
    /// The image in client pixels.
    [[nodiscard]] Rect ImageInClient() const { return ImageRect().Moved(-scroll.x, -scroll.y); }

    [[nodiscard]] Point ToDocument(Point clientPoint) const;
    [[nodiscard]] Point ToCanvas(Point documentPoint) const;
    [[nodiscard]] Point ToClient(Point documentPoint) const;
    /// A length of document pixels in canvas pixels, truncated.
    [[nodiscard]] int ToCanvasLength(int documentPixels) const;
    /// The four edges as points are; does not take the scroll position into account.
    [[nodiscard]] Rect ToDocument(const Rect& clientRect) const;
    /// A rectangle of document pixels as it is drawn, in client pixels.
    [[nodiscard]] Rect ToClient(const Rect& documentRect) const;
    /// Client pixels that a change inside the document rectangle may touch.
    [[nodiscard]] Rect Touched(const Rect& documentRect) const { return ToClient(documentRect).Inflated(2); }

    friend bool operator==(const ViewGeometry&, const ViewGeometry&) = default;
};
