// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ShapeTool.h"

#include "canvas/ConstrainedPoint.h"
#include "canvas/PixoluneView.h"
#include "canvas/RubberBand.h"
#include "canvas/ShapeObject.h"
#include "platform/settings/Settings.h"

#include <algorithm>

namespace {

/// The diameter of a rectangle's corners: fiftieths of the shorter side.
int CornerDiameter(int roundRadius, const Rect& box)
{
    return static_cast<int>(int64_t{roundRadius} * std::min(box.Width(), box.Height()) / 50);
}

} // namespace

void CShapeTool::Down(const MouseInput& input)
{
    m_anchor = m_current = View().Geometry().ToDocument(input.client);
    m_drawing = true;
    InvalidateBand();
}

void CShapeTool::Follow(const MouseInput& input)
{
    InvalidateBand();
    const Point point = View().Geometry().ToDocument(input.client);
    m_current = input.shift ? SnapSquare(m_anchor, point) : point;
    InvalidateBand();
}

void CShapeTool::Move(const MouseInput& input)
{
    if (m_drawing)
        Follow(input);
}

void CShapeTool::Up(const MouseInput& input)
{
    if (!m_drawing)
        return;
    Follow(input);
    InvalidateBand();
    m_drawing = false;
    CPixoluneDoc& document = View().Document();
    const CSettings& settings = document.Services().settings;
    const Rect box = Box();
    const int corner = CornerDiameter(settings.Get(Setting::RoundRadius), box);
    const ShapeFill fill = settings.IsOn(Setting::FillInsideShape) ? ShapeFill::Filled : ShapeFill::Outline;
    AddShapeObject(
        document,
        PaintShapeOnPic(box, settings.Get(Setting::PaintShapeWidth), m_kind, fill, {corner, corner}),
        m_kind == ShapeKind::Ellipse ? ObjectListKind::PaintEllipse : ObjectListKind::PaintRectangle,
        input.button);
}

void CShapeTool::Cancel()
{
    if (m_drawing)
        InvalidateBand();
    m_drawing = false;
}

Rect CShapeTool::Box() const
{
    return {std::min(m_anchor.x, m_current.x), std::min(m_anchor.y, m_current.y),
            std::max(m_anchor.x, m_current.x), std::max(m_anchor.y, m_current.y)};
}

void CShapeTool::InvalidateBand() const
{
    constexpr int kReach = 2;
    const Rect box = View().Geometry().ToClient(Box());
    if (m_kind == ShapeKind::Rectangle)
        View().InvalidateFrame(box, kReach);
    else
        View().Invalidate(box.Inflated(kReach));
}

void CShapeTool::PaintFeedback(const BitmapView& target, const Rect& area) const
{
    if (!m_drawing)
        return;
    const auto draw = m_kind == ShapeKind::Ellipse ? InvertEllipse : InvertRectangle;
    draw(target, area, View().Geometry().ToClient(Box()));
}
