// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectionTool.h"

#include "canvas/PixoluneView.h"

#include <algorithm>
#include <memory>

namespace {

Point Difference(Point to, Point from)
{
    const Rect between{from.x, from.y, to.x, to.y};
    return {between.Width(), between.Height()};
}

/// A distance in canvas pixels as one of document pixels.
int ToDocumentPixels(int distance, int zoom)
{
    return zoom >= 1 ? distance / zoom : MultiplyClamped(distance, -zoom);
}

/// As much of the distance as keeps the region within its range of coordinates.
Point Possible(Point distance, const Rect& bounds)
{
    return {std::clamp(distance.x, -CRegion::kLimit - bounds.left, CRegion::kLimit - bounds.right),
            std::clamp(distance.y, -CRegion::kLimit - bounds.top, CRegion::kLimit - bounds.bottom)};
}

} // namespace

void CSelectionTool::Down(const MouseInput& input)
{
    if (input.button != MouseButton::Left)
        return;
    m_pressed = m_last = input.client;
    m_offset = {};
    if (View().Selection().Contains(View().Geometry().ToDocument(input.client)))
        m_state = State::Moving;
    else if (Begin(input) == Gesture::Drag)
        m_state = State::Drawing;
}

void CSelectionTool::Move(const MouseInput& input)
{
    if (m_state == State::Moving)
        MoveOutline(input.client);
    else if (m_state == State::Drawing)
        Extend(input);
}

void CSelectionTool::Up(const MouseInput& input)
{
    const State state = std::exchange(m_state, State::Idle);
    if (state == State::Moving)
        FinishMoving(input.client);
    else if (state == State::Drawing)
        Finish(input);
    View().InvalidateAll();
}

void CSelectionTool::Cancel()
{
    if (std::exchange(m_state, State::Idle) == State::Moving)
        View().SetOutlineOffset({});
    View().InvalidateAll();
}

void CSelectionTool::PaintFeedback(const BitmapView& target, const Rect& area) const
{
    if (m_state == State::Drawing)
        PaintShape(target, area);
}

std::optional<Rect> CSelectionTool::DraggedRect() const
{
    if (m_state != State::Moving)
        return m_state == State::Drawing ? ShapeRect() : std::nullopt;
    const Point distance = Distance(m_last);
    return View().Selection().Bounds().Moved(distance.x, distance.y);
}

CursorShape CSelectionTool::Cursor(Point documentPoint) const
{
    const bool moves =
        m_state == State::Moving || (m_state == State::Idle && View().Selection().Contains(documentPoint));
    return moves ? CursorShape::MoveSelection : m_cursor;
}

void CSelectionTool::MoveOutline(Point client)
{
    Point delta = Difference(client, m_last);
    const int zoom = View().Zoom();
    if (zoom > 1)
        delta = {delta.x / zoom * zoom, delta.y / zoom * zoom};
    m_last = client;
    m_offset = {AddClamped(m_offset.x, delta.x), AddClamped(m_offset.y, delta.y)};
    View().SetOutlineOffset(m_offset);
}

Point CSelectionTool::Distance(Point client) const
{
    const Point total = Difference(client, m_pressed);
    const int zoom = View().Zoom();
    return Possible({ToDocumentPixels(total.x, zoom), ToDocumentPixels(total.y, zoom)},
                    View().Selection().Bounds());
}

void CSelectionTool::FinishMoving(Point client)
{
    const Point distance = Distance(client);
    CRegion region = View().Selection();
    if (distance == Point() || !region.Translate(distance.x, distance.y)) {
        View().SetOutlineOffset({});
        return;
    }
    auto command = std::make_unique<CMoveSelectionCommand>(View().SharedSelection(), distance);
    View().SetSelection(std::move(region));
    View().Document().Record(std::move(command));
}

void CSelectionTool::Complete(CRegion shape, const MouseInput& input)
{
    const CRegion& old = View().Selection();
    if (input.shift && !old.IsEmpty() && !shape.Unite(old))
        return;
    if (input.ctrl && !old.IsEmpty() && !shape.Subtract(old))
        return;
    ChangeSelection(View(), m_kind, std::move(shape));
}
