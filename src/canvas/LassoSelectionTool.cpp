// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/LassoSelectionTool.h"

#include "canvas/PixoluneView.h"
#include "canvas/RubberBand.h"

#include <algorithm>

CSelectionTool::Gesture CLassoSelectionTool::Begin(const MouseInput& input)
{
    m_path = {input.client};
    return Gesture::Drag;
}

void CLassoSelectionTool::Extend(const MouseInput& input)
{
    const Point last = m_path.back();
    m_path.push_back(input.client);
    View().Invalidate(Rect{std::min(last.x, input.client.x), std::min(last.y, input.client.y),
                           std::max(last.x, input.client.x), std::max(last.y, input.client.y)}
                          .Inflated(1));
}

void CLassoSelectionTool::Finish(const MouseInput& input)
{
    std::ranges::transform(m_path, m_path.begin(),
                           [&](Point client) { return View().Geometry().ToDocument(client); });
    std::optional<CRegion> shape = CRegion::Polygon(m_path);
    m_path.clear();
    if (shape)
        Complete(*std::move(shape), input);
}

void CLassoSelectionTool::PaintShape(const BitmapView& target, const Rect& area) const
{
    InvertPolyline(target, area, m_path);
}
