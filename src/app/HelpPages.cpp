// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HelpPages.h"

#include <algorithm>
#include <cctype>

namespace {

using enum CommandId;

/// Commands that stand together and share a page.
struct PageRow {
    CommandId first;
    CommandId last;
    std::string_view page;
};

constexpr PageRow kPages[] = {
    {FileNew, FileNew, "new-image"},
    {FileOpen, FileOpen, "open"},
    {FileSave, FileSaveAs, "save"},
    {FileSaveAsJpg, FileSaveAsJpg, "format-jpg"},
    {FileSaveAsGif, FileSaveAsGif, "format-gif"},
    {FileSaveAsBmp, FileSaveAsBmp, "format-bmp"},
    {FileSaveAsPsd, FileSaveAsPsd, "format-psd"},
    {FileSaveAsPng, FileSaveAsPng, "format-png"},
    {FileSaveAsTiff, FileSaveAsTiff, "format-tif"},
    {FileSaveAsTga, FileSaveAsTga, "format-tga"},
    {FileSaveAsPcx, FileSaveAsPcx, "format-pcx"},
    {FileSaveAsIco, FileSaveAsIco, "format-ico"},
    {FileSaveAsCur, FileSaveAsCur, "format-cur"},
    {FileSaveAsAni, FileSaveAsAni, "format-ani"},
    {FilePageSetup, FilePrint, "print"},
    {FileExportAnimation, FileExportAnimation, "animations"},
    {FileClose, FileExit, "main-window"},
    {EditUndo, EditRedo, "undo"},
    {EditCut, EditDelete, "clipboard"},
    {EditSelectAll, EditInvertSelection, "selections"},
    {EditResize, EditResize, "resize-image"},
    {EditPreferences, EditPreferences, "preferences"},
    {ViewZoomIn, ViewEighth, "zoom"},
    {ViewPlayAnimation, ViewPlayAnimation, "animations"},
    {ViewToolBar, ViewStatusBar, "main-window"},
    {ViewObjectsPanel, ViewObjectsPanel, "objects-panel"},
    {ViewOptionsPanel, ViewOptionsPanel, "options-panel"},
    {ViewFullScreen, ViewResetLayout, "main-window"},
    {ObjectNew, ObjectTrim, "objects"},
    {ObjectAddImages, ObjectAddImages, "add-images"},
    {ObjectAddAvi, ObjectAddAvi, "format-avi"},
    {ObjectProperties, ObjectProperties, "properties"},
    {AlignLeft, CenterBoth, "align"},
    {TransformGray, TransformMirrorVertically, "gray-negative-mirror"},
    {TransformBrightnessContrast, TransformBrightnessContrast, "brightness-contrast"},
    {TransformRedGreenBlue, TransformRedGreenBlue, "red-green-blue"},
    {TransformHueSaturationLightness, TransformHueSaturationLightness, "hue-saturation-lightness"},
    {TransformBlur, TransformBlur, "blur"},
    {TransformGaussianBlur, TransformGaussianBlur, "gaussian-blur"},
    {TransformSharpness, TransformSharpness, "sharpness"},
    {TransformEmboss, TransformEmboss, "emboss"},
    {TransformSunspot, TransformSunspot, "sunspot"},
    {RotateLeft45, RotateCustom, "rotate"},
    {ToolDefault, ToolDefault, "tool-default"},
    {ToolRectangularSelection, ToolRectangularSelection, "tool-rectangular-selection"},
    {ToolEllipticalSelection, ToolEllipticalSelection, "tool-elliptical-selection"},
    {ToolLassoSelection, ToolLassoSelection, "tool-lasso-selection"},
    {ToolMagicWandSelection, ToolMagicWandSelection, "tool-magic-wand-selection"},
    {ToolText, ToolText, "tool-text"},
    {ToolPencil, ToolPencil, "tool-pencil"},
    {ToolErase, ToolErase, "tool-erase"},
    {ToolFloodFill, ToolFloodFill, "tool-flood-fill"},
    {ToolPickColor, ToolPickColor, "tool-pick-color"},
    {ToolRectangle, ToolRectangle, "tool-rectangle"},
    {ToolEllipse, ToolEllipse, "tool-ellipse"},
    {ToolPolygon, ToolPolygon, "tool-polygon"},
    {WindowNew, WindowCloseAll, "main-window"},
    {HelpTopics, HelpTopics, "index"},
    {HelpKeyboard, HelpKeyboard, "keyboard"},
    {HelpFindCommand, HelpFindCommand, "find-command"},
    {HelpAbout, HelpAbout, "about"},
};

} // namespace

std::string_view HelpPage(CommandId id)
{
    const auto* row = std::ranges::find_if(
        kPages, [id](const PageRow& page) { return page.first <= id && id <= page.last; });
    return row == std::end(kPages) ? std::string_view() : row->page;
}

std::string_view HelpPage(ToolMode mode)
{
    return HelpPage(static_cast<CommandId>(static_cast<int>(ToolDefault) + static_cast<int>(mode)));
}

std::string FormatHelpPage(std::string_view ending)
{
    std::string page = "format-";
    for (const char letter : ending) {
        if (letter != '.')
            page += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    return page;
}
