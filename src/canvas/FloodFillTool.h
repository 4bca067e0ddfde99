// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FillBrush.h"
#include "canvas/Tool.h"
#include "model/PicObject.h"

/// Fills areas of an object with a click: the left button with the foreground colour, the right one with the
/// background colour.
class CFloodFillTool final : public CTool {
public:
    using CTool::CTool;

    void Down(const MouseInput& input) override;
    [[nodiscard]] CursorShape Cursor(Point /*documentPoint*/) const override
    {
        return CursorShape::FloodFill;
    }

private:
    /// Both return false when memory runs out.
    [[nodiscard]] bool FillColour(const Ref<CPicObject>& object, Point point, const Paint& paint);
    [[nodiscard]] bool FillTransparency(const Ref<CPicObject>& object, Point point, const Paint& paint);
};
