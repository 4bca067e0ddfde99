// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PixoluneApp.h"
#include "canvas/PixoluneView.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Every command of menus, tool bars, panels and scripts.
enum class CommandId {
    // File
    FileNew,
    FileOpen,
    FileSave,
    FileSaveAs,
    // One for each row of the table of save formats, in its order
    FileSaveAsJpg,
    FileSaveAsGif,
    FileSaveAsBmp,
    FileSaveAsPsd,
    FileSaveAsPng,
    FileSaveAsTiff,
    FileSaveAsTga,
    FileSaveAsPcx,
    FileSaveAsIco,
    FileSaveAsCur,
    FileSaveAsAni,
    FileExportAnimation,
    FileClose,
    FilePageSetup,
    FilePrintPreview,
    FilePrint,
    FileExit,
    // Edit
    EditUndo,
    EditRedo,
    EditCut,
    EditCopy,
    EditCopyMerged,
    EditPaste,
    EditDelete,
    EditSelectAll,
    EditUnselectAll,
    EditInvertSelection,
    EditResize,
    EditPreferences,
    // View
    ViewZoomIn,
    ViewZoomOut,
    ViewActualSize,
    ViewZoom2,
    ViewZoom3,
    ViewZoom4,
    ViewZoom5,
    ViewZoom6,
    ViewZoom7,
    ViewZoom8,
    ViewHalf,
    ViewThird,
    ViewFourth,
    ViewFifth,
    ViewSixth,
    ViewSeventh,
    ViewEighth,
    ViewPlayAnimation,
    ViewToolBar,
    ViewDrawingBar,
    ViewStatusBar,
    ViewObjectsPanel,
    ViewOptionsPanel,
    ViewFullScreen,
    ViewResetLayout,
    // Object
    ObjectNew,
    ObjectDuplicate,
    ObjectDelete,
    ObjectCombine,
    ObjectMakeFrame,
    ObjectMoveToFront,
    ObjectMoveForward,
    ObjectMoveToBack,
    ObjectMoveBackward,
    ObjectTrim,
    ObjectAddImages,
    ObjectAddAvi,
    ObjectProperties,
    // Layout page
    AlignLeft,
    AlignRight,
    AlignTop,
    AlignBottom,
    CenterHorizontally,
    CenterVertically,
    CenterBoth,
    // Transform
    TransformGray,
    TransformNegative,
    TransformMirrorHorizontally,
    TransformMirrorVertically,
    TransformBrightnessContrast,
    TransformRedGreenBlue,
    TransformHueSaturationLightness,
    TransformBlur,
    TransformGaussianBlur,
    TransformSharpness,
    TransformEmboss,
    TransformSunspot,
    RotateLeft45,
    RotateLeft90,
    Rotate180,
    RotateRight45,
    RotateRight90,
    RotateCustom,
    // Tools, in the order of the tool modes
    ToolDefault,
    ToolRectangularSelection,
    ToolEllipticalSelection,
    ToolLassoSelection,
    ToolMagicWandSelection,
    ToolText,
    ToolPencil,
    ToolErase,
    ToolFloodFill,
    ToolPickColor,
    ToolRectangle,
    ToolEllipse,
    ToolPolygon,
    // Window
    WindowNew,
    WindowTabs,
    WindowCascade,
    WindowTileHorizontally,
    WindowTileVertically,
    WindowNext,
    WindowPrevious,
    WindowClose,
    WindowCloseAll,
    // Help
    HelpTopics,
    HelpKeyboard,
    HelpFindCommand,
    HelpAbout,
};

/// The windows of the desktop program: what a command needs them for.
class IShell {
public:
    virtual ~IShell() = default;
    /// Runs a command that opens a dialog or changes windows; false when it was cancelled or failed.
    virtual bool RunWindowCommand(CommandId id) = 0;
    [[nodiscard]] virtual bool IsWindowCommandChecked(CommandId /*id*/) const { return false; }
};

/// What a command acts on: the active document and view, none without a window on a document.
struct CommandContext {
    CPixoluneApp& app;
    CPixoluneDoc* document = nullptr;
    CPixoluneView* view = nullptr;
    IShell* shell = nullptr;
    /// Set while RunCommand is at work, for handlers that serve several rows.
    CommandId id = CommandId::FileNew;
};

/// One row of the command table. Menus, tool bars, prompts, the list of shortcuts and scripts are made
/// from it.
struct CommandRow {
    CommandId id;
    std::string_view menu;     ///< "Edit" or "Transform/Rotate"; empty: in no menu
    int group;                 ///< a separator stands between groups of one menu
    std::string_view text;     ///< menu text, "&" before the mnemonic
    std::string_view prompt;   ///< status bar text while the item is highlighted
    std::string_view tip;      ///< tool tip
    std::string_view shortcut; ///< "Ctrl+Shift+Z"; alternatives separated by "; "
    std::string_view icon;     ///< name of the icon without its ending; empty for none
    bool (*isEnabled)(const CommandContext&);
    bool (*isChecked)(const CommandContext&); ///< none: not a check item
    bool (*run)(CommandContext&);             ///< whether something was done
    /// The text as it is now, for items whose text changes; none for all others.
    std::string (*currentText)(const CommandContext&) = nullptr;
};

/// All rows in menu order.
[[nodiscard]] std::span<const CommandRow> CommandTable();
[[nodiscard]] const CommandRow& FindCommand(CommandId id);
[[nodiscard]] bool IsCommandEnabled(const CommandContext& context, CommandId id);
/// Runs an enabled command; false when it is disabled, refused or failed.
bool RunCommand(CommandContext& context, CommandId id);
