// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/InPlaceStroke.h"
#include "canvas/StrokeTool.h"

#include <optional>

/// Makes pixels of an object transparent along a line.
class CEraseTool final : public CStrokeTool {
public:
    explicit CEraseTool(CPixoluneView& view)
        : CStrokeTool(view, CursorShape::Eraser, Str::EraseNoObject, Str::EraseNoneSelected)
    {
    }

protected:
    [[nodiscard]] StrokeSettings ReadSettings() const override;
    void BeginStroke(MouseButton button) override;
    [[nodiscard]] Rect Reach() const override { return Target()->Rectangle(); }
    bool ApplySegment(const CCoverageMask& mask) override;
    bool FinishStroke() override;
    void AbandonStroke() override;

private:
    uint8_t m_transparence = 255;
    std::optional<CInPlaceStroke> m_stroke;
};
