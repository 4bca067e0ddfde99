// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionState.h"
#include "history/undo/EditCommand.h"

/// What changed the selection as a whole.
enum class SelectionKind { Rectangular, Elliptic, Lasso, MagicWand, SelectAll, UnselectAll, Invert };

/// The selection became another one.
class CSelectionCommand final : public CExchangeCommand {
public:
    /// Keeps the selection as it is before the change.
    CSelectionCommand(SelectionKind kind, const Ref<CSelectionState>& selection);
    void VisitParts(ICommandParts& parts) const override;

protected:
    void Exchange() override;

private:
    Ref<CSelectionState> m_selection;
    CRegion m_other;
};

/// The selection moved. Its name is the same in both lists.
class CMoveSelectionCommand final : public CEditCommand {
public:
    /// distance: in document pixels, as the selection moves now.
    CMoveSelectionCommand(const Ref<CSelectionState>& selection, Point distance)
        : CEditCommand(Str::UndoMoveSelection), m_selection(selection), m_distance(distance)
    {
    }
    void Undo() override { MoveBack(); }
    void Redo() override { MoveBack(); }
    void VisitParts(ICommandParts& parts) const override;

private:
    void MoveBack();

    Ref<CSelectionState> m_selection;
    Point m_distance;
};

/// Gives a selection another region; its view, as long as it is open, repaints.
void InstallSelection(CSelectionState& selection, CRegion region);
