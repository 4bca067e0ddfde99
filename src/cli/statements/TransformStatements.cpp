// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"

#include <array>

namespace {

using enum CommandId;

Outcome Mirror(CSession& session, CArguments& arguments)
{
    constexpr std::array<std::string_view, 2> kDirections{"horizontally", "vertically"};
    const bool isVertical = arguments.Choice("direction", kDirections) == 1;
    if (!arguments.Finish())
        return Outcome::ScriptError;
    return session.RunMenuCommand(isVertical ? TransformMirrorVertically : TransformMirrorHorizontally);
}

constexpr StatementRow kRows[] = {
    MenuRow<TransformNegative>("negative", "Inverts the colours of the selected objects."),
    MenuRow<TransformGray>("gray", "Makes the selected objects grey."),
    {"mirror", "horizontally|vertically", "Mirrors the selected objects.", Needs::Document, Mirror},
};

} // namespace

std::span<const StatementRow> TransformStatements()
{
    return kRows;
}
