// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

template <ToolMode mode> bool SelectTool(CommandContext& context)
{
    context.view->SetMode(mode);
    return true;
}

template <ToolMode mode> bool IsTool(const CommandContext& context)
{
    return HasView(context) && context.view->Mode() == mode;
}

template <ToolMode mode>
constexpr CommandRow ToolRow(CommandId id, std::string_view prompt, std::string_view name,
                             std::string_view shortcut, std::string_view icon)
{
    return {id, "Tools", 0, name, prompt, name, shortcut, icon, HasView, IsTool<mode>, SelectTool<mode>};
}

constexpr CommandRow kRows[] = {
    ToolRow<ToolMode::Default>(ToolDefault, "Default mode", "Default Mode", "V", "tool-default"),
    ToolRow<ToolMode::RectangularSelection>(ToolRectangularSelection, "Rectangular selection",
                                            "Rectangular Selection", "R", "tool-rectangular-selection"),
    ToolRow<ToolMode::EllipticalSelection>(ToolEllipticalSelection, "Elliptical selection",
                                           "Elliptical Selection", "S", "tool-elliptical-selection"),
    ToolRow<ToolMode::LassoSelection>(ToolLassoSelection, "Lasso selection", "Lasso Selection", "L",
                                      "tool-lasso-selection"),
    ToolRow<ToolMode::MagicWandSelection>(ToolMagicWandSelection, "Magic wand selection",
                                          "Magic Wand Selection", "W", "tool-magic-wand-selection"),
    ToolRow<ToolMode::Text>(ToolText, "Text", "Text", "T", "tool-text"),
    ToolRow<ToolMode::Pencil>(ToolPencil, "Pencil", "Pencil", "P", "tool-pencil"),
    ToolRow<ToolMode::Erase>(ToolErase, "Erase", "Erase", "E", "tool-erase"),
    ToolRow<ToolMode::FloodFill>(ToolFloodFill, "Flood fill", "Flood Fill", "F", "tool-flood-fill"),
    ToolRow<ToolMode::PickColor>(ToolPickColor, "Pick color", "Pick Color", "I", "tool-pick-color"),
    ToolRow<ToolMode::Rectangle>(ToolRectangle, "Rectangle", "Rectangle", "B", "tool-rectangle"),
    ToolRow<ToolMode::Ellipse>(ToolEllipse, "Ellipse", "Ellipse", "O", "tool-ellipse"),
    ToolRow<ToolMode::Polygon>(ToolPolygon, "Polygon", "Polygon", "G", "tool-polygon"),
};

} // namespace

std::span<const CommandRow> ToolCommands()
{
    return kRows;
}
