// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

/// Every text that the program's logic shows, in the order of the string table.
enum class Str {
    ApplicationTitle,
    // Long operations
    ReadingFile,
    SavingFile,
    // Failures
    LoadFileFailed,
    SaveFileFailed,
    OutOfMemory,
    // Refusals
    SelectedPartEmpty,
    ObjectsLocked,
    NoExcessBorder,
    NoVisibleObject,
    EraseNoObject,
    EraseNoneSelected,
    NoObject,
    NoneSelected,
    AlreadyInFront,
    AlreadyBack,
    LineNoObject,
    LineNoneSelected,
    FloodNoObject,
    FloodNoneSelected,
    FloodTransparentArea,
    ClickOutsideSelection,
    SelectOnlyOne,
    // Questions
    ClearSelection,
    SaveChanges,
    // Undo and redo items
    CantUndo,
    CantRedo,
    // Names of commands while they can be undone
    UndoShowHide,
    UndoLockUnlock,
    UndoMove,
    UndoAlignTop,
    UndoAlignBottom,
    UndoAlignLeft,
    UndoAlignRight,
    UndoCenterVertically,
    UndoCenterHorizontally,
    UndoCenterBoth,
    UndoNewObject,
    UndoDuplicate,
    UndoDeleteObjects,
    UndoCombine,
    UndoPaste,
    UndoDelete,
    UndoCut,
    UndoAddText,
    UndoPaintRectangle,
    UndoPaintEllipse,
    UndoPaintPolygon,
    UndoAddImageFiles,
    UndoAddAvi,
    UndoOpacity,
    UndoMakeFrame,
    UndoMoveToFront,
    UndoMoveToBack,
    UndoMoveForward,
    UndoMoveBackward,
    UndoTrim,
    UndoPaintLine,
    UndoFlood,
    UndoRotate,
    UndoErase,
    UndoNegative,
    UndoGray,
    UndoMirrorHorizontally,
    UndoMirrorVertically,
    UndoAdjustRgb,
    UndoAdjustHsl,
    UndoAdjustBc,
    UndoBlur,
    UndoGaussianBlur,
    UndoSharpness,
    UndoEmboss,
    UndoSunspot,
    UndoResize,
    UndoProperties,
    UndoRectangularSelection,
    UndoEllipticSelection,
    UndoLassoSelection,
    UndoMagicWandSelection,
    UndoSelectAll,
    UndoUnselectAll,
    UndoInvert,
    UndoMoveSelection,
    // Status bar
    PointerPosition,
    // Several dialogs
    MoreColors,
    DoNotAskAgain,
    Width,
    Height,
    // Files
    OpenFile,
    OpenFilter,
    SaveDocumentAs,
    NativeFilter,
    RecentFiles,
    // Bars
    ToolBar,
    DrawingBar,
    // New Image
    NewImage,
    ImageDimension,
    Appearance,
    SimpleColor,
    Transparent,
    // Preferences
    Preferences,
    Maintain,
    LevelsOfUndoRedo,
    HandlingPsdLayers,
    ImportLayersAsObjects,
    ImportCompositeAsFrame,
    DefaultBackgroundColor,
    DefaultBackgroundColorNote,
    // About
    About,
    AboutPurpose,
    AboutLicence,
    Count
};

/// The text itself, exact to the blank.
[[nodiscard]] std::string_view Text(Str id);
/// The text with its "%s" replaced.
[[nodiscard]] std::string Text(Str id, std::string_view argument);
/// The text with its first and second "%d" replaced.
[[nodiscard]] std::string Text(Str id, int first, int second);
