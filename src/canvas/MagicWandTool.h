// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionTool.h"

/// Selects what looks like the pixel under the pointer, at the press of the button.
class CMagicWandTool final : public CSelectionTool {
public:
    explicit CMagicWandTool(CPixoluneView& view)
        : CSelectionTool(view, SelectionKind::MagicWand, CursorShape::MagicWand)
    {
    }

protected:
    Gesture Begin(const MouseInput& input) override;
};
