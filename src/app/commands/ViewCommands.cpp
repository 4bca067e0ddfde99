// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

bool CanZoomIn(const CommandContext& context)
{
    return HasView(context) && context.view->Zoom() != kMaxZoom;
}

bool CanZoomOut(const CommandContext& context)
{
    return HasView(context) && context.view->Zoom() != kMinZoom;
}

bool IsNotActualSize(const CommandContext& context)
{
    return HasView(context) && context.view->Zoom() != 1;
}

bool ZoomIn(CommandContext& context)
{
    context.view->SetZoom(NextZoomIn(context.view->Zoom()));
    return true;
}

bool ZoomOut(CommandContext& context)
{
    context.view->SetZoom(NextZoomOut(context.view->Zoom()));
    return true;
}

template <int zoom> bool ZoomTo(CommandContext& context)
{
    context.view->SetZoom(zoom);
    return true;
}

template <int zoom> bool IsZoomedTo(const CommandContext& context)
{
    return HasView(context) && context.view->Zoom() == zoom;
}

template <int zoom>
constexpr CommandRow ZoomRow(CommandId id, std::string_view text, std::string_view prompt,
                             std::string_view shortcut)
{
    constexpr int kGroup = zoom > 1 ? 1 : 2;
    return {id,          zoom > 1 ? "View/Zoom In To" : "View/Zoom Out To",
            kGroup,      text,
            prompt,      "",
            shortcut,    "",
            HasView,     IsZoomedTo<zoom>,
            ZoomTo<zoom>};
}

bool CanPlay(const CommandContext& context)
{
    return HasView(context) && context.document->Canvas().CountVisible() > 1;
}

bool IsPlaying(const CommandContext& context)
{
    return HasView(context) && context.view->IsPlaying();
}

bool PlayOrStop(CommandContext& context)
{
    context.view->SetPlaying(!context.view->IsPlaying());
    return true;
}

constexpr CommandRow kRows[] = {
    {ViewZoomIn, "View", 0, "Zoom &In", "Zoom in", "Zoom In", "Ctrl++; Ctrl+=", "zoom-in", CanZoomIn, nullptr,
     ZoomIn},
    {ViewZoomOut, "View", 0, "Zoom &Out", "Zoom out", "Zoom Out", "Ctrl+-", "zoom-out", CanZoomOut, nullptr,
     ZoomOut},
    {ViewActualSize, "View", 0, "&Actual Size", "Actual size", "Actual Size", "Ctrl+1; Ctrl+0", "zoom-actual",
     IsNotActualSize, nullptr, ZoomTo<1>},
    ZoomRow<2>(ViewZoom2, "&2 : 1", "Change the view to two times the actual size", "Ctrl+2"),
    ZoomRow<3>(ViewZoom3, "&3 : 1", "Change the view to three times the actual size", "Ctrl+3"),
    ZoomRow<4>(ViewZoom4, "&4 : 1", "Change the view to four times the actual size", "Ctrl+4"),
    ZoomRow<5>(ViewZoom5, "&5 : 1", "Change the view to five times the actual size", "Ctrl+5"),
    ZoomRow<6>(ViewZoom6, "&6 : 1", "Change the view to six times the actual size", "Ctrl+6"),
    ZoomRow<7>(ViewZoom7, "&7 : 1", "Change the view to seven times the actual size", "Ctrl+7"),
    ZoomRow<8>(ViewZoom8, "&8 : 1", "Change the view to eight times the actual size", "Ctrl+8"),
    ZoomRow<-2>(ViewHalf, "1 : &2", "Change the view one-half the actual size", ""),
    ZoomRow<-3>(ViewThird, "1 : &3", "Change the view one-third the actual size", ""),
    ZoomRow<-4>(ViewFourth, "1 : &4", "Change the view one-fourth the actual size", ""),
    ZoomRow<-5>(ViewFifth, "1 : &5", "Change the view one-fifth the actual size", ""),
    ZoomRow<-6>(ViewSixth, "1 : &6", "Change the view one-sixth the actual size", ""),
    ZoomRow<-7>(ViewSeventh, "1 : &7", "Change the view one-seventh the actual size", ""),
    ZoomRow<-8>(ViewEighth, "1 : &8", "Change the view one-eighth the actual size", ""),
    {ViewPlayAnimation, "View", 5, "P&lay Animation",
     "Show the visible objects one after another in the window, or stop that", "Play Animation", "F9", "play",
     CanPlay, IsPlaying, PlayOrStop},
    {ViewToolBar, "View", 3, "&Toolbar", "Show or hide the toolbar", "", "", "", HasShell, IsCheckedInShell,
     RunInShell},
    {ViewDrawingBar, "View", 3, "&Drawing Toolbar", "Show or hide the drawing toolbar", "", "", "", HasShell,
     IsCheckedInShell, RunInShell},
    {ViewOptionsPanel, "View", 3, "O&ptions Panel", "Show or hide the Options Panel", "", "F8",
     "panel-options", HasShell, IsCheckedInShell, RunInShell},
    {ViewObjectsPanel, "View", 3, "O&bjects Panel", "Show or hide the Objects Panel", "", "F7",
     "panel-objects", HasShell, IsCheckedInShell, RunInShell},
    {ViewStatusBar, "View", 3, "&Status Bar", "Show or hide the status bar", "", "", "", HasShell,
     IsCheckedInShell, RunInShell},
    {ViewResetLayout, "View", 3, "&Reset Layout",
     "Put bars, panels and windows back to where they were first", "", "", "", HasShell, nullptr, RunInShell},
    {ViewFullScreen, "View", 4, "&Full Screen", "Uses the whole screen for the program", "", "F11",
     "full-screen", HasShell, IsCheckedInShell, RunInShell},
};

} // namespace

std::span<const CommandRow> ViewCommands()
{
    return kRows;
}
