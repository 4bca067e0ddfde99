// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/DefaultTool.h"

#include "canvas/PixoluneView.h"
#include "document/PlacementOperations.h"
#include "document/Refusal.h"

namespace {

/// Changes the selected flags for a click on `hit`, or on nothing.
void SelectByClick(CPixoluneDoc& document, const Ref<CPicObject>& hit, const MouseInput& input)
{
    CObjectCanvas& canvas = document.Canvas();
    if (!hit)
        canvas.DeselectAll();
    else if (input.ctrl)
        hit->SetSelected(!hit->IsSelected());
    else if (hit->IsSelected())
        return;
    else {
        if (!input.shift)
            canvas.DeselectAll();
        hit->SetSelected(true);
    }
    document.NotifyObjectSelectionChanged();
}

/// The topmost visible text around the point: the gaps between letters count as well. None without one.
Ref<CPicObject> TextAt(const CObjectCanvas& canvas, Point point)
{
    Ref<CPicObject> found;
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (object->visible && object->Rectangle().Contains(point) && object->image &&
            object->image->Dib().WrittenText())
            found = object;
    }
    return found;
}

} // namespace

void CDefaultTool::Down(const MouseInput& input)
{
    if (input.button != MouseButton::Left)
        return;
    CPixoluneDoc& document = View().Document();
    m_last = View().Geometry().ToDocument(input.client);
    m_total = {};
    const Ref<CPicObject> hit =
        input.alt ? document.Canvas().TopHit(m_last) : document.Canvas().ClickTarget(m_last);
    SelectByClick(document, hit, input);
    if (hit && document.Canvas().CountSelected() > 0)
        m_state = State::Armed;
}

void CDefaultTool::Move(const MouseInput& input)
{
    if (m_state == State::Idle)
        return;
    CPixoluneDoc& document = View().Document();
    if (m_state == State::Armed) {
        m_wasModified = document.IsModified();
        m_state = BeginMove(document) ? State::Moving : State::Idle;
        if (m_state == State::Idle)
            return;
        m_recorded = document.History().PeekUndo();
    } else if (document.History().PeekUndo() != m_recorded) {
        // The move was undone, or something else done, while it went on.
        m_state = State::Idle;
        return;
    }
    const Point point = View().Geometry().ToDocument(input.client);
    const Point delta{AddClamped(point.x, -m_last.x), AddClamped(point.y, -m_last.y)};
    m_last = point;
    if (delta == Point())
        return;
    m_total = {AddClamped(m_total.x, delta.x), AddClamped(m_total.y, delta.y)};
    MoveSelected(document, delta.x, delta.y);
}

void CDefaultTool::Up(const MouseInput& /*input*/)
{
    if (m_state == State::Moving)
        View().Document().NotifyObjectsChanged();
    m_state = State::Idle;
}

bool CDefaultTool::DoubleClick(const MouseInput& input)
{
    const Ref<CPicObject> hit =
        TextAt(View().Document().Canvas(), View().Geometry().ToDocument(input.client));
    if (input.button != MouseButton::Left || !hit || hit->locked)
        return false;
    View().AskForTextOf(hit);
    return true;
}

void CDefaultTool::Cancel()
{
    CPixoluneDoc& document = View().Document();
    // What was recorded since stands on the move, which then stays.
    if (m_state == State::Moving && document.History().PeekUndo() == m_recorded) {
        MoveSelected(document, -m_total.x, -m_total.y);
        document.WithdrawNewest();
        document.SetModified(m_wasModified);
        document.NotifyObjectsChanged();
    }
    m_state = State::Idle;
}

std::optional<Rect> CDefaultTool::DraggedRect() const
{
    if (m_state != State::Moving)
        return std::nullopt;
    Rect moved;
    for (const Ref<CPicObject>& object : View().Document().Canvas().objects) {
        if (object->IsActive())
            moved = moved.United(object->Rectangle());
    }
    return moved;
}

CursorShape CDefaultTool::Cursor(Point /*documentPoint*/) const
{
    return m_state == State::Moving ? CursorShape::DragObjects : CursorShape::Arrow;
}
