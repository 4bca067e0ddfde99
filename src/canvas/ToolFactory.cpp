// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ToolFactory.h"

#include "canvas/DefaultTool.h"

std::unique_ptr<CTool> CreateTool(ToolMode mode, CPixoluneView& view)
{
    switch (mode) {
    case ToolMode::Default:
        return std::make_unique<CDefaultTool>(view);
    default:
        return std::make_unique<CTool>(view);
    }
}
