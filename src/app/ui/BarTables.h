// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

#include <optional>

/// Which commands the tool bars and the menus without a title offer, in their order.
namespace BarTables {

using enum CommandId;

inline constexpr std::optional<CommandId> kSeparator;

/// The main tool bar.
inline constexpr std::optional<CommandId> kMainBar[] = {
    FileNew,
    FileOpen,
    FileSave,
    kSeparator,
    EditCut,
    EditCopy,
    EditPaste,
    EditDelete,
    kSeparator,
    EditUndo,
    EditRedo,
    kSeparator,
    ViewZoomIn,
    ViewZoomOut,
    ViewActualSize,
    kSeparator,
    ObjectNew,
    ObjectDuplicate,
    kSeparator,
    EditResize,
    TransformRedGreenBlue,
    TransformHueSaturationLightness,
    TransformGaussianBlur,
    TransformSharpness,
    TransformEmboss,
};

/// The drawing tool bar.
inline constexpr std::optional<CommandId> kDrawingBar[] = {
    ToolDefault,
    kSeparator,
    ToolRectangularSelection,
    ToolEllipticalSelection,
    ToolLassoSelection,
    ToolMagicWandSelection,
    kSeparator,
    ToolPencil,
    ToolErase,
    ToolFloodFill,
    ToolPickColor,
    kSeparator,
    ToolText,
    ToolRectangle,
    ToolEllipse,
    ToolPolygon,
};

/// The menu of the canvas.
inline constexpr std::optional<CommandId> kCanvasMenu[] = {
    EditCut,       EditCopy,   EditPaste,         EditDelete,        kSeparator,         ObjectDuplicate,
    ObjectCombine, kSeparator, ObjectMoveToFront, ObjectMoveForward, ObjectMoveBackward, ObjectMoveToBack,
    kSeparator,    ObjectTrim, ObjectProperties,
};

/// What the menu of the bars and docks offers.
inline constexpr std::optional<CommandId> kWindowParts[] = {
    ViewToolBar,   ViewDrawingBar, ViewOptionsPanel, ViewObjectsPanel,
    ViewStatusBar, kSeparator,     ViewResetLayout,
};

} // namespace BarTables
