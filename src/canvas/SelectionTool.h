// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionOperations.h"
#include "canvas/Tool.h"

/// What all selection tools share: a press inside the selection drags it, anywhere else it begins a new
/// shape.
class CSelectionTool : public CTool {
public:
    CSelectionTool(CPixoluneView& view, SelectionKind kind, CursorShape cursor)
        : CTool(view), m_kind(kind), m_cursor(cursor)
    {
    }

    void Down(const MouseInput& input) final;
    void Move(const MouseInput& input) final;
    void Up(const MouseInput& input) final;
    void Cancel() final;
    [[nodiscard]] bool IsBusy() const final { return m_state != State::Idle; }
    void PaintFeedback(const BitmapView& target, const Rect& area) const final;
    [[nodiscard]] std::optional<Rect> DraggedRect() const final;
    [[nodiscard]] CursorShape Cursor(Point documentPoint) const final;

protected:
    /// Whether the shape goes on until the button comes up.
    enum class Gesture { Click, Drag };

    /// A button went down outside the selection.
    virtual Gesture Begin(const MouseInput& input) = 0;
    /// The pointer moved while the shape is drawn.
    virtual void Extend(const MouseInput& /*input*/) {}
    /// The button came up: the tool completes its shape.
    virtual void Finish(const MouseInput& /*input*/) {}
    virtual void PaintShape(const BitmapView& /*target*/, const Rect& /*area*/) const {}
    /// The rectangle of document pixels around the shape that is drawn; none for a shape of another kind.
    [[nodiscard]] virtual std::optional<Rect> ShapeRect() const { return std::nullopt; }

    /// Joins a new shape with the selection as the keys of the message that completes it say, and records the
    /// change: Shift adds to the selection, Ctrl keeps what of the shape was not selected before.
    void Complete(CRegion shape, const MouseInput& input);
    /// The shape is none: the selection is given up, which is recorded all the same.
    void CompleteWithNothing() { ChangeSelection(View(), m_kind, CRegion()); }

private:
    enum class State { Idle, Drawing, Moving };

    void MoveOutline(Point client);
    void FinishMoving(Point client);
    /// How far a drag to the point moves the selection, in document pixels.
    [[nodiscard]] Point Distance(Point client) const;

    SelectionKind m_kind;
    CursorShape m_cursor;
    State m_state = State::Idle;
    Point m_pressed; ///< client points
    Point m_last;
    Point m_offset; ///< canvas pixels
};
