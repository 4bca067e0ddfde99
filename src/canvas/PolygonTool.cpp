// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PolygonTool.h"

#include "canvas/ConstrainedPoint.h"
#include "canvas/PixoluneView.h"
#include "canvas/RubberBand.h"
#include "canvas/ShapeObject.h"
#include "platform/settings/Settings.h"

#include <cstdlib>

namespace {

/// How near to the first vertex a press closes the polygon, in client pixels.
constexpr int kClosingDistance = 4;

} // namespace

Point CPolygonTool::PointFor(const MouseInput& input) const
{
    const Point point = View().Geometry().ToDocument(input.client);
    return input.shift && !m_points.empty() ? SnapDirection(m_points.back(), point) : point;
}

bool CPolygonTool::IsAtFirstVertex(Point client) const
{
    const Point first = View().Geometry().ToClient(m_points.front());
    return std::abs(int64_t{first.x} - client.x) <= kClosingDistance &&
           std::abs(int64_t{first.y} - client.y) <= kClosingDistance;
}

void CPolygonTool::Down(const MouseInput& input)
{
    if (m_points.size() > 2 && IsAtFirstVertex(input.client)) {
        Complete();
        return;
    }
    if (m_points.empty())
        m_button = input.button;
    const Point point = PointFor(input);
    // The second press of a double click adds no vertex of its own.
    if (m_points.empty() || point != m_points.back())
        m_points.push_back(point);
    m_pointer = point;
    InvalidateBand();
}

void CPolygonTool::Move(const MouseInput& input)
{
    if (m_points.empty())
        return;
    InvalidateBand();
    m_pointer = PointFor(input);
    InvalidateBand();
}

bool CPolygonTool::DoubleClick(const MouseInput& /*input*/)
{
    Complete();
    return true;
}

bool CPolygonTool::Key(ToolKey key)
{
    if (m_points.empty())
        return false;
    InvalidateBand();
    if (key == ToolKey::Enter)
        Complete();
    else
        m_points.pop_back();
    return true;
}

void CPolygonTool::Complete()
{
    if (m_points.empty())
        return;
    InvalidateBand();
    const std::vector<Point> points = std::exchange(m_points, {});
    CPixoluneDoc& document = View().Document();
    const CSettings& settings = document.Services().settings;
    const ShapeFill fill = settings.IsOn(Setting::FillInsideShape) ? ShapeFill::Filled : ShapeFill::Outline;
    AddShapeObject(document, PaintPolygonOnPic(points, settings.Get(Setting::PaintShapeWidth), fill),
                   ObjectListKind::PaintPolygon, m_button);
}

void CPolygonTool::Cancel()
{
    if (!m_points.empty())
        InvalidateBand();
    m_points.clear();
}

void CPolygonTool::InvalidateBand() const
{
    Rect touched;
    for (const Point& point : m_points)
        touched = touched.United(Rect::At(point, {1, 1}));
    const Rect band = touched.United(Rect::At(m_pointer, {1, 1})).Inflated(1);
    View().Invalidate(View().Geometry().Touched(band));
}

void CPolygonTool::PaintFeedback(const BitmapView& target, const Rect& area) const
{
    if (m_points.empty())
        return;
    std::vector<Point> band;
    for (const Point& point : m_points)
        band.push_back(View().Geometry().ToClient(point));
    band.push_back(View().Geometry().ToClient(m_pointer));
    InvertPolyline(target, area, band);
}
