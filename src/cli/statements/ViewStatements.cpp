// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"

#include <array>

namespace {

using enum CommandId;

constexpr int kLargestClientSide = 10'000;
constexpr int kLargestScroll = 100'000'000;

Outcome SetClientSize(CSession& session, CArguments& arguments)
{
    const int width = arguments.Integer("W", 1, kLargestClientSide);
    const int height = arguments.Integer("H", 1, kLargestClientSide);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.View().SetClientSize({width, height});
    return Outcome::Done;
}

Outcome Zoom(CSession& session, CArguments& arguments)
{
    const int zoom = arguments.Integer("Z", kMinZoom, kMaxZoom);
    if (!IsZoom(zoom))
        arguments.Reject("Z: " + std::to_string(zoom) + " is no zoom factor");
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.View().SetZoom(zoom);
    return Outcome::Done;
}

Outcome Scroll(CSession& session, CArguments& arguments)
{
    const int x = arguments.Integer("X", 0, kLargestScroll);
    const int y = arguments.Integer("Y", 0, kLargestScroll);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.View().SetScroll({x, y});
    return Outcome::Done;
}

/// In the order of the tool modes, as the commands are.
constexpr std::array<std::string_view, kToolModeCount> kTools{
    "default",
    "rectangular-selection",
    "elliptical-selection",
    "lasso-selection",
    "magic-wand-selection",
    "text",
    "pencil",
    "erase",
    "flood-fill",
    "pick-color",
    "rectangle",
    "ellipse",
    "polygon",
};

Outcome SelectTool(CSession& session, CArguments& arguments)
{
    const auto mode = static_cast<int>(arguments.Choice("tool", kTools));
    if (!arguments.Finish())
        return Outcome::ScriptError;
    return session.RunMenuCommand(static_cast<CommandId>(static_cast<int>(ToolDefault) + mode));
}

constexpr StatementRow kRows[] = {
    {"view", "W H", "Sets the client size of the view's window; at first 800 600.", Needs::Document,
     SetClientSize},
    {"zoom", "Z", "Sets the zoom factor: 1 to 8 magnifies, -2 to -8 reduces.", Needs::Document, Zoom},
    {"scroll", "X Y", "Scrolls to a position in canvas pixels, or the nearest there is.", Needs::Document,
     Scroll},
    {"tool",
     "default|rectangular-selection|elliptical-selection|lasso-selection|magic-wand-selection|text|pencil|"
     "erase|flood-fill|pick-color|rectangle|ellipse|polygon",
     "Sets the tool.", Needs::Document, SelectTool},
};

} // namespace

std::span<const StatementRow> ViewStatements()
{
    return kRows;
}
