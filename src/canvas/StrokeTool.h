// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"
#include "model/PicObject.h"
#include "platform/pen/SegmentMask.h"
#include "platform/strings/Strings.h"

/// What a stroke tool reads from the settings when a button goes down.
struct StrokeSettings {
    Pen pen;
    bool beeline = false; ///< one straight line from press to release
};

/// What pencil and eraser share: the object to work on, and the segments between the pointer's positions,
/// each rasterised and applied as it comes. The release adds none, but to a beeline: a click without a move
/// makes one dab where the button went down. Shift turns a beeline to multiples of 15 degrees. The outline of
/// the brush follows the pointer.
class CStrokeTool : public CTool {
public:
    CStrokeTool(CPixoluneView& view, CursorShape cursor, Str noObject, Str noneSelected)
        : CTool(view), m_cursor(cursor), m_noObject(noObject), m_noneSelected(noneSelected)
    {
    }

    void Down(const MouseInput& input) final;
    void Move(const MouseInput& input) final;
    void Up(const MouseInput& input) final;
    void Cancel() final;
    [[nodiscard]] bool IsBusy() const final { return static_cast<bool>(m_target); }
    void PaintFeedback(const BitmapView& target, const Rect& area) const final;
    [[nodiscard]] Rect PointerArea() const final;
    [[nodiscard]] CursorShape Cursor(Point /*documentPoint*/) const final { return m_cursor; }

protected:
    [[nodiscard]] virtual StrokeSettings ReadSettings() const = 0;
    virtual void BeginStroke(MouseButton button) = 0;
    /// The document pixels that the stroke may reach; masks lie in coordinates from its corner.
    [[nodiscard]] virtual Rect Reach() const = 0;
    /// False when memory runs out; the segment is then left out.
    virtual bool ApplySegment(const CCoverageMask& mask) = 0;
    /// Records what has been painted, if anything. False when memory runs out; everything is put back then.
    virtual bool FinishStroke() = 0;
    /// Puts everything back.
    virtual void AbandonStroke() = 0;

    /// The object that is painted.
    [[nodiscard]] const Ref<CPicObject>& Target() const { return m_target; }

private:
    /// Where the segment to the pointer ends.
    [[nodiscard]] Point EndPoint(const MouseInput& input) const;
    void DrawSegment(Point from, Point to);
    void InvalidateLine() const;

    CursorShape m_cursor;
    Str m_noObject;
    Str m_noneSelected;
    Ref<CPicObject> m_target; ///< while a stroke is under way
    StrokeSettings m_settings;
    Point m_last; ///< document point up to which the stroke has been drawn
    bool m_hasMoved = false;
    bool m_lacksSegment = false; ///< for want of memory
    Point m_pressedClient;
    Point m_pointerClient;
};

/// The radius over which an edge fades: a percentage of the width, truncated.
[[nodiscard]] constexpr int SmoothingRadius(int width, int percent)
{
    return width * percent / 100;
}
