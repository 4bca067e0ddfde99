// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"

#include <vector>

/// Draws a polygon as a new object: each press adds a vertex; a double click, Enter or a press on the first
/// vertex completes it, Backspace takes the last vertex back. Shift turns edges to multiples of 15 degrees.
class CPolygonTool final : public CTool {
public:
    using CTool::CTool;

    void Down(const MouseInput& input) override;
    void Move(const MouseInput& input) override;
    bool DoubleClick(const MouseInput& input) override;
    bool Key(ToolKey key) override;
    void Cancel() override;
    [[nodiscard]] bool IsBusy() const override { return !m_points.empty(); }
    void PaintFeedback(const BitmapView& target, const Rect& area) const override;
    [[nodiscard]] CursorShape Cursor(Point) const override { return CursorShape::Shape; }

private:
    [[nodiscard]] Point PointFor(const MouseInput& input) const;
    [[nodiscard]] bool IsAtFirstVertex(Point client) const;
    void Complete();
    void InvalidateBand() const;

    std::vector<Point> m_points; ///< document coordinates
    Point m_pointer;             ///< document coordinates
    MouseButton m_button = MouseButton::Left;
};
