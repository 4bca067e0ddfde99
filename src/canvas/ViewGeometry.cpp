// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ViewGeometry.h"

#include <algorithm>

namespace {

int Scaled(int value, int zoom)
{
    return zoom >= 1 ? MultiplyClamped(value, zoom) : value / -zoom;
}

int Unscaled(int value, int zoom)
{
    return zoom >= 1 ? value / zoom : MultiplyClamped(value, -zoom);
}

int Margin(int scaled, int client)
{
    return ViewGeometry::kMargin +
           (client - std::min(AddClamped(scaled, 2 * ViewGeometry::kMargin), client)) / 2;
}

} // namespace

Size ViewGeometry::ScaledSize() const
{
    return {Scaled(document.width, zoom), Scaled(document.height, zoom)};
}

Size ViewGeometry::Extent() const
{
    const Size scaled = ScaledSize();
    return {AddClamped(scaled.width, 2 * kMargin), AddClamped(scaled.height, 2 * kMargin)};
}

Size ViewGeometry::ScrollRange() const
{
    const Size extent = Extent();
    return {std::max(extent.width, client.width), std::max(extent.height, client.height)};
}

Point ViewGeometry::ClampedScroll(Point wanted) const
{
    const Size range = ScrollRange();
    return {std::clamp(wanted.x, 0, range.width - client.width),
            std::clamp(wanted.y, 0, range.height - client.height)};
}

Point ViewGeometry::MarginOffset() const
{
    const Size scaled = ScaledSize();
    return {Margin(scaled.width, client.width), Margin(scaled.height, client.height)};
}

Rect ViewGeometry::ImageRect() const
{
    return Rect::At(MarginOffset(), ScaledSize());
}

Point ViewGeometry::ToDocument(Point clientPoint) const
{
    const Point margin = MarginOffset();
    return {Unscaled(AddClamped(clientPoint.x, scroll.x - margin.x), zoom),
            Unscaled(AddClamped(clientPoint.y, scroll.y - margin.y), zoom)};
}

Point ViewGeometry::ToCanvas(Point documentPoint) const
{
    const Point margin = MarginOffset();
    return {AddClamped(Scaled(documentPoint.x, zoom), margin.x),
            AddClamped(Scaled(documentPoint.y, zoom), margin.y)};
}

Point ViewGeometry::ToClient(Point documentPoint) const
{
    const Point canvas = ToCanvas(documentPoint);
    return {AddClamped(canvas.x, -scroll.x), AddClamped(canvas.y, -scroll.y)};
}

int ViewGeometry::ToCanvasLength(int documentPixels) const
{
    return Scaled(documentPixels, zoom);
}

Rect ViewGeometry::ToDocument(const Rect& clientRect) const
{
    const Point margin = MarginOffset();
    const Rect moved = clientRect.Moved(-margin.x, -margin.y);
    return {Unscaled(moved.left, zoom), Unscaled(moved.top, zoom), Unscaled(moved.right, zoom),
            Unscaled(moved.bottom, zoom)};
}

Rect ViewGeometry::ToClient(const Rect& documentRect) const
{
    const Point corner = ToClient(documentRect.Corner());
    const Point end = ToClient(Point{documentRect.right, documentRect.bottom});
    return {corner.x, corner.y, end.x, end.y};
}
