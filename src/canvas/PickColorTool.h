// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"

/// Shows the colour under the pointer and takes it at a press: with the left button as the foreground colour,
/// with the right one as the background colour. Nothing is taken where nothing is shown.
class CPickColorTool final : public CTool {
public:
    using CTool::CTool;

    void Down(const MouseInput& input) override;
    void Move(const MouseInput& input) override;
    [[nodiscard]] CursorShape Cursor(Point /*documentPoint*/) const override
    {
        return CursorShape::PickColor;
    }
};
