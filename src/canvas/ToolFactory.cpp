// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ToolFactory.h"

#include "canvas/DefaultTool.h"
#include "canvas/PolygonTool.h"
#include "canvas/ShapeTool.h"
#include "canvas/TextTool.h"

std::unique_ptr<CTool> CreateTool(ToolMode mode, CPixoluneView& view)
{
    switch (mode) {
    case ToolMode::Default:
        return std::make_unique<CDefaultTool>(view);
    case ToolMode::Text:
        return std::make_unique<CTextTool>(view);
    case ToolMode::Rectangle:
        return std::make_unique<CShapeTool>(view, ShapeKind::Rectangle);
    case ToolMode::Ellipse:
        return std::make_unique<CShapeTool>(view, ShapeKind::Ellipse);
    case ToolMode::Polygon:
        return std::make_unique<CPolygonTool>(view);
    default:
        return std::make_unique<CTool>(view);
    }
}
