// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/StrokeTool.h"

#include "canvas/BrushOutline.h"
#include "canvas/ConstrainedPoint.h"
#include "canvas/PaintTarget.h"
#include "canvas/PixoluneView.h"
#include "canvas/RubberBand.h"
#include "document/Refusal.h"

#include <algorithm>
#include <array>

namespace {

/// A brush narrower than this many screen pixels shows as no outline: the cursor alone says where it is.
constexpr int kLeastOutline = 4;

} // namespace

void CStrokeTool::Down(const MouseInput& input)
{
    CPixoluneDoc& document = View().Document();
    if (document.Canvas().objects.IsEmpty()) {
        Refuse(document, m_noObject);
        return;
    }
    const Point point = View().Geometry().ToDocument(input.client);
    m_target = FindPaintTarget(document.Canvas(), point);
    if (!m_target) {
        Refuse(document, m_noneSelected);
        return;
    }
    SelectPaintTarget(document, *m_target);
    m_settings = ReadSettings();
    m_last = point;
    m_hasMoved = m_lacksSegment = false;
    m_pressedClient = m_pointerClient = input.client;
    BeginStroke(input.button);
    if (m_settings.beeline)
        InvalidateLine();
}

void CStrokeTool::Move(const MouseInput& input)
{
    if (!m_target)
        return;
    if (m_settings.beeline) {
        InvalidateLine();
        m_pointerClient = input.shift ? View().Geometry().ToClient(EndPoint(input)) : input.client;
        InvalidateLine();
        return;
    }
    const Point point = View().Geometry().ToDocument(input.client);
    if (point == m_last)
        return;
    DrawSegment(m_last, point);
    m_last = point;
    m_hasMoved = true;
}

void CStrokeTool::Up(const MouseInput& input)
{
    if (!m_target)
        return;
    CPixoluneDoc& document = View().Document();
    if (document.Canvas().objects.Find(m_target.Get()) == CObjectList::kNone) {
        // It went while it was painted.
        Cancel();
        return;
    }
    if (m_settings.beeline) {
        InvalidateLine();
        DrawSegment(m_last, EndPoint(input));
    } else if (!m_hasMoved) {
        DrawSegment(m_last, m_last);
    }
    const bool isComplete = FinishStroke() && !m_lacksSegment;
    m_target = nullptr;
    if (!isComplete)
        Refuse(document, Str::OutOfMemory);
}

void CStrokeTool::Cancel()
{
    if (!m_target)
        return;
    InvalidateLine();
    AbandonStroke();
    m_target = nullptr;
}

void CStrokeTool::PaintFeedback(const BitmapView& target, const Rect& area) const
{
    if (m_target && m_settings.beeline)
        InvertPolyline(target, area, std::array{m_pressedClient, m_pointerClient});
    if (!PointerArea().Intersected(area).IsEmpty()) {
        const ViewGeometry& geometry = View().Geometry();
        BrushOutline(geometry.ToDocument(View().Pointer()), ReadSettings().pen)
            .Paint(target, area, geometry, {}, 0);
    }
}

Rect CStrokeTool::PointerArea() const
{
    const ViewGeometry& geometry = View().Geometry();
    const Pen pen = ReadSettings().pen;
    if (!View().IsPointerInside() || geometry.ToCanvasLength(pen.width) < kLeastOutline)
        return {};
    const Rect dab = DabBox(geometry.ToDocument(View().Pointer()), pen);
    return dab.Intersected(View().Document().Canvas().Rectangle()).IsEmpty() ? Rect() : geometry.Touched(dab);
}

Point CStrokeTool::EndPoint(const MouseInput& input) const
{
    const Point point = View().Geometry().ToDocument(input.client);
    return m_settings.beeline && input.shift ? SnapDirection(m_last, point) : point;
}

void CStrokeTool::DrawSegment(Point from, Point to)
{
    const Rect reach = Reach();
    const CRegion& selection = View().Selection();
    if (SegmentBox(reach, from, to, m_settings.pen, selection).IsEmpty())
        return;
    const std::optional<CCoverageMask> mask = RasteriseSegment(reach, from, to, m_settings.pen, selection);
    if (!mask || !ApplySegment(*mask))
        m_lacksSegment = true;
}

void CStrokeTool::InvalidateLine() const
{
    const auto [left, right] = std::minmax(m_pressedClient.x, m_pointerClient.x);
    const auto [top, bottom] = std::minmax(m_pressedClient.y, m_pointerClient.y);
    View().Invalidate(Rect{left, top, right, bottom}.Inflated(1));
}
