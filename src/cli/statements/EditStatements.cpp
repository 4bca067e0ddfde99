// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"

namespace {

using enum CommandId;

constexpr int kMostSteps = 1'000'000;

/// Undo or redo, several times; refused at the first step that the menu would show disabled.
template <CommandId id> Outcome Steps(CSession& session, CArguments& arguments)
{
    const int count = arguments.HasMore() ? arguments.Integer("N", 1, kMostSteps) : 1;
    if (!arguments.Finish())
        return Outcome::ScriptError;
    for (int step = 0; step < count; ++step) {
        const Outcome outcome = session.RunMenuCommand(id);
        if (outcome != Outcome::Done)
            return outcome;
    }
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"undo", "[N]", "Undoes the last change, or the last N.", Needs::Document, Steps<EditUndo>},
    {"redo", "[N]", "Redoes the change undone last, or the last N.", Needs::Document, Steps<EditRedo>},
    MenuRow<EditCut>("cut", "Copies the selection and then clears it."),
    MenuRow<EditCopy>("copy", "Copies the selected part, or the selected objects."),
    MenuRow<EditCopyMerged>("copy-merged", "Copies the frame, cut to the selection, as one picture."),
    MenuRow<EditPaste>("paste", "Inserts what was copied."),
    MenuRow<EditDelete>("delete", "Clears the selected part, or removes the selected objects."),
    MenuRow<EditSelectAll>("select-all", "Makes the whole document the selection."),
    MenuRow<EditUnselectAll>("unselect-all", "Gives the selection up."),
    MenuRow<EditInvertSelection>("invert-selection", "Selects what is not selected."),
};

} // namespace

std::span<const StatementRow> EditStatements()
{
    return kRows;
}
