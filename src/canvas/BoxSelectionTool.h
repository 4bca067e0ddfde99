// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionTool.h"

/// Selects a rectangle or the ellipse inscribed in it, from corner to corner.
class CBoxSelectionTool : public CSelectionTool {
public:
    using CSelectionTool::CSelectionTool;

protected:
    Gesture Begin(const MouseInput& input) final;
    void Extend(const MouseInput& input) final;
    void Finish(const MouseInput& input) final;
    [[nodiscard]] std::optional<Rect> ShapeRect() const final;
    /// The drawn box in client pixels.
    [[nodiscard]] Rect Box() const;
    /// What the rubber band touches is to be painted again.
    virtual void InvalidateBand() const;
    /// The shape in a rectangle of document pixels; none when memory runs out.
    [[nodiscard]] virtual std::optional<CRegion> ShapeIn(const Rect& box) const = 0;

private:
    Point m_anchor;
    Point m_corner;
};

class CRectangularSelectionTool final : public CBoxSelectionTool {
public:
    explicit CRectangularSelectionTool(CPixoluneView& view)
        : CBoxSelectionTool(view, SelectionKind::Rectangular, CursorShape::RectangularSelection)
    {
    }

protected:
    void InvalidateBand() const override;
    void PaintShape(const BitmapView& target, const Rect& area) const override;
    [[nodiscard]] std::optional<CRegion> ShapeIn(const Rect& box) const override { return CRegion(box); }
};

class CEllipticalSelectionTool final : public CBoxSelectionTool {
public:
    explicit CEllipticalSelectionTool(CPixoluneView& view)
        : CBoxSelectionTool(view, SelectionKind::Elliptic, CursorShape::EllipticalSelection)
    {
    }

protected:
    void PaintShape(const BitmapView& target, const Rect& area) const override;
    [[nodiscard]] std::optional<CRegion> ShapeIn(const Rect& box) const override
    {
        return CRegion::Ellipse(box);
    }
};
