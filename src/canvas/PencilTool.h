// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FillBrush.h"
#include "canvas/GrowingPicture.h"
#include "canvas/InPlaceStroke.h"
#include "canvas/StrokeTool.h"

#include <optional>

/// Paints a line: with the left button in the foreground colour, with the right one in the background colour.
class CPencilTool final : public CStrokeTool {
public:
    explicit CPencilTool(CPixoluneView& view)
        : CStrokeTool(view, CursorShape::Pencil, Str::LineNoObject, Str::LineNoneSelected)
    {
    }

protected:
    [[nodiscard]] StrokeSettings ReadSettings() const override;
    void BeginStroke(MouseButton button) override;
    [[nodiscard]] Rect Reach() const override;
    bool ApplySegment(const CCoverageMask& mask) override;
    bool FinishStroke() override;
    void AbandonStroke() override;

private:
    bool AddToLayer(const CCoverageMask& mask);
    bool JoinLayer();

    Paint m_paint;
    /// Where transparent areas may be painted the stroke has a layer of its own, which then joins the object;
    /// otherwise it goes straight into the object's pixels.
    std::optional<CGrowingPicture> m_layer;
    std::optional<CInPlaceStroke> m_inPlace;
};
