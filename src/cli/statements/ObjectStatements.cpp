// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"
#include "document/ObjectOperations.h"
#include "document/SizeEntry.h"

#include <algorithm>
#include <array>

namespace {

using enum CommandId;

/// A menu command for each word that the statement may be followed by.
template <const auto& words, const auto& commands>
Outcome ChosenCommand(CSession& session, CArguments& arguments)
{
    static_assert(words.size() == commands.size());
    const size_t chosen = arguments.Choice("direction", words);
    return arguments.Finish() ? session.RunMenuCommand(commands[chosen]) : Outcome::ScriptError;
}

constexpr std::array<std::string_view, 4> kEdges{"left", "right", "top", "bottom"};
constexpr std::array<CommandId, 4> kAlignCommands{AlignLeft, AlignRight, AlignTop, AlignBottom};
constexpr std::array<std::string_view, 3> kAxes{"horizontally", "vertically", "both"};
constexpr std::array<CommandId, 3> kCenterCommands{CenterHorizontally, CenterVertically, CenterBoth};

Outcome Resize(CSession& session, CArguments& arguments)
{
    const Size now = session.Canvas().Size();
    const CSizeEntry entry({std::max(now.width, 1), std::max(now.height, 1)});
    const CSizeEntry::Range widths = entry.PixelWidthRange();
    const CSizeEntry::Range heights = entry.PixelHeightRange();
    const int width = arguments.Integer("W", widths.minimum, widths.maximum);
    const int height = arguments.Integer("H", heights.minimum, heights.maximum);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.FinishDrag();
    ResizeCanvas(session.Document(), {width, height});
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    MenuRow<ObjectNew>("new-object", "Adds a transparent object of the canvas's size on top."),
    MenuRow<ObjectDuplicate>("duplicate-objects", "Duplicates the selected objects."),
    MenuRow<ObjectDelete>("delete-objects", "Deletes the selected objects."),
    MenuRow<ObjectCombine>("combine", "Makes one object of the selected visible objects."),
    MenuRow<ObjectMakeFrame>("make-frame", "Makes one object of the whole frame and hides the others."),
    MenuRow<ObjectMoveToFront>("move-to-front", "Moves the selected objects to the front."),
    MenuRow<ObjectMoveForward>("move-forward", "Moves the selected objects one place to the front."),
    MenuRow<ObjectMoveToBack>("move-to-back", "Moves the selected objects to the back."),
    MenuRow<ObjectMoveBackward>("move-backward", "Moves the selected objects one place to the back."),
    {"align", "left|right|top|bottom", "Lines up the selected objects at an edge.", Needs::Document,
     ChosenCommand<kEdges, kAlignCommands>},
    {"center", "horizontally|vertically|both", "Centres the selected objects on the canvas.", Needs::Document,
     ChosenCommand<kAxes, kCenterCommands>},
    MenuRow<ObjectTrim>("trim", "Cuts the transparent borders off the selected objects."),
    {"resize", "W H", "Changes the canvas's size; the objects stay as they are.", Needs::Document, Resize},
};

} // namespace

std::span<const StatementRow> ObjectStatements()
{
    return kRows;
}
