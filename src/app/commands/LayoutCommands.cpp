// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"
#include "document/PlacementOperations.h"

namespace {

using enum CommandId;

template <PlacementKind kind> bool Align(CommandContext& context)
{
    return AlignObjects(*context.document, kind);
}

template <PlacementKind kind>
constexpr CommandRow AlignRow(CommandId id, std::string_view tip, std::string_view icon)
{
    return {id, "", 0, tip, tip, tip, "", icon, HasDocument, nullptr, Align<kind>};
}

// The buttons of the layout page; "Allign top" is how that tip has always read.
constexpr CommandRow kRows[] = {
    AlignRow<PlacementKind::AlignLeft>(AlignLeft, "Align left", "align-left"),
    AlignRow<PlacementKind::AlignRight>(AlignRight, "Align right", "align-right"),
    AlignRow<PlacementKind::AlignTop>(AlignTop, "Allign top", "align-top"),
    AlignRow<PlacementKind::AlignBottom>(AlignBottom, "Align bottom", "align-bottom"),
    AlignRow<PlacementKind::CenterHorizontally>(CenterHorizontally, "Center horizontally",
                                                "center-horizontally"),
    AlignRow<PlacementKind::CenterVertically>(CenterVertically, "Center vertically", "center-vertically"),
    AlignRow<PlacementKind::CenterBoth>(CenterBoth, "Center horizontally and vertically", "center-both"),
};

} // namespace

std::span<const CommandRow> LayoutCommands()
{
    return kRows;
}
