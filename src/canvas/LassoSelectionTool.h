// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionTool.h"

#include <vector>

/// Selects what lies inside a path drawn by hand.
class CLassoSelectionTool final : public CSelectionTool {
public:
    explicit CLassoSelectionTool(CPixoluneView& view)
        : CSelectionTool(view, SelectionKind::Lasso, CursorShape::LassoSelection)
    {
    }

protected:
    Gesture Begin(const MouseInput& input) override;
    void Extend(const MouseInput& input) override;
    void Finish(const MouseInput& input) override;
    void PaintShape(const BitmapView& target, const Rect& area) const override;

private:
    std::vector<Point> m_path; ///< client points
};
