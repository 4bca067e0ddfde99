// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"
#include "platform/paint/PaintShape.h"

/// Draws a rectangle or an ellipse as a new object. Shift makes it a square or a circle.
class CShapeTool final : public CTool {
public:
    CShapeTool(CPixoluneView& view, ShapeKind kind) : CTool(view), m_kind(kind) {}

    void Down(const MouseInput& input) override;
    void Move(const MouseInput& input) override;
    void Up(const MouseInput& input) override;
    void Cancel() override;
    [[nodiscard]] bool IsBusy() const override { return m_drawing; }
    void PaintFeedback(const BitmapView& target, const Rect& area) const override;
    [[nodiscard]] std::optional<Rect> DraggedRect() const override
    {
        return m_drawing ? std::optional(Box()) : std::nullopt;
    }
    [[nodiscard]] CursorShape Cursor(Point) const override { return CursorShape::Shape; }

private:
    /// The shape's box in document coordinates, normalised.
    [[nodiscard]] Rect Box() const;
    /// What the rubber band touches is to be painted again.
    void InvalidateBand() const;
    void Follow(const MouseInput& input);

    ShapeKind m_kind;
    bool m_drawing = false;
    Point m_anchor;  ///< document
    Point m_current; ///< document
};
