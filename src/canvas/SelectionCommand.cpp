// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectionCommand.h"

#include "canvas/PixoluneView.h"

#include <utility>

namespace {

constexpr Str kNames[] = {Str::UndoRectangularSelection,
                          Str::UndoEllipticSelection,
                          Str::UndoLassoSelection,
                          Str::UndoMagicWandSelection,
                          Str::UndoSelectAll,
                          Str::UndoUnselectAll,
                          Str::UndoInvert};

} // namespace

CSelectionCommand::CSelectionCommand(SelectionKind kind, const Ref<CSelectionState>& selection)
    : CExchangeCommand(kNames[static_cast<size_t>(kind)]), m_selection(selection), m_other(selection->region)
{
}

void CSelectionCommand::Exchange()
{
    InstallSelection(*m_selection, std::exchange(m_other, m_selection->region));
}

void CMoveSelectionCommand::MoveBack()
{
    CRegion region = m_selection->region;
    m_distance = {-m_distance.x, -m_distance.y};
    if (region.Translate(m_distance.x, m_distance.y))
        InstallSelection(*m_selection, std::move(region));
}

void CSelectionCommand::VisitParts(ICommandParts& parts) const
{
    parts.Selection(Ref<CSharedObj>(m_selection.Get()), m_other);
}

void CMoveSelectionCommand::VisitParts(ICommandParts& parts) const
{
    parts.SelectionMove(Ref<CSharedObj>(m_selection.Get()), m_distance);
}

void InstallSelection(CSelectionState& selection, CRegion region)
{
    if (selection.view != nullptr)
        selection.view->SetSelection(std::move(region));
    else
        selection.region = std::move(region);
}
