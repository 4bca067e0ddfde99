// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The tools of the canvas, in the order of their numbers 0 to 12.
enum class ToolMode {
    Default,
    RectangularSelection,
    EllipticalSelection,
    LassoSelection,
    MagicWandSelection,
    Text,
    Pencil,
    Erase,
    FloodFill,
    PickColor,
    Rectangle,
    Ellipse,
    Polygon,
};
inline constexpr int kToolModeCount = 13;

/// Whether the tool makes selections.
[[nodiscard]] constexpr bool IsSelectionTool(ToolMode mode)
{
    return mode >= ToolMode::RectangularSelection && mode <= ToolMode::MagicWandSelection;
}

/// Pointer shapes; the window draws them.
enum class CursorShape {
    Arrow,
    DragObjects,
    MoveSelection,
    RectangularSelection,
    EllipticalSelection,
    LassoSelection,
    MagicWand,
    Pencil,
    Eraser,
    FloodFill,
    PickColor,
    Shape,
    Hand,
};
