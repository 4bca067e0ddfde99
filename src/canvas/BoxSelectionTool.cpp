// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/BoxSelectionTool.h"

#include "canvas/PixoluneView.h"
#include "canvas/RubberBand.h"

#include <algorithm>

CSelectionTool::Gesture CBoxSelectionTool::Begin(const MouseInput& input)
{
    m_anchor = m_corner = input.client;
    return Gesture::Drag;
}

void CBoxSelectionTool::Extend(const MouseInput& input)
{
    InvalidateBand();
    m_corner = input.client;
    InvalidateBand();
}

void CBoxSelectionTool::Finish(const MouseInput& input)
{
    m_corner = input.client;
    if (Box().IsEmpty())
        CompleteWithNothing();
    else if (std::optional<CRegion> shape = ShapeIn(*ShapeRect()))
        Complete(*std::move(shape), input);
}

std::optional<Rect> CBoxSelectionTool::ShapeRect() const
{
    const Rect drawn = Box();
    const Point first = View().Geometry().ToDocument(drawn.Corner());
    const Point end = View().Geometry().ToDocument(Point{drawn.right, drawn.bottom});
    return Rect{first.x, first.y, end.x, end.y};
}

Rect CBoxSelectionTool::Box() const
{
    return {std::min(m_anchor.x, m_corner.x), std::min(m_anchor.y, m_corner.y),
            std::max(m_anchor.x, m_corner.x), std::max(m_anchor.y, m_corner.y)};
}

void CBoxSelectionTool::InvalidateBand() const
{
    View().Invalidate(Box());
}

void CRectangularSelectionTool::InvalidateBand() const
{
    View().InvalidateFrame(Box(), 1);
}

void CRectangularSelectionTool::PaintShape(const BitmapView& target, const Rect& area) const
{
    InvertRectangle(target, area, Box());
}

void CEllipticalSelectionTool::PaintShape(const BitmapView& target, const Rect& area) const
{
    InvertEllipse(target, area, Box());
}
