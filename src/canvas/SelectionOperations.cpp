// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectionOperations.h"

#include "canvas/PixoluneView.h"

#include <memory>

void ChangeSelection(CPixoluneView& view, SelectionKind kind, CRegion region)
{
    auto command = std::make_unique<CSelectionCommand>(kind, view.SharedSelection());
    view.SetSelection(std::move(region));
    view.Document().Record(std::move(command));
}

bool SelectAll(CPixoluneView& view)
{
    ChangeSelection(view, SelectionKind::SelectAll, CRegion(view.Document().Canvas().Rectangle()));
    return true;
}

bool UnselectAll(CPixoluneView& view)
{
    ChangeSelection(view, SelectionKind::UnselectAll, CRegion());
    return true;
}

bool InvertSelection(CPixoluneView& view)
{
    CRegion region(view.Document().Canvas().Rectangle());
    if (!region.Subtract(view.Selection()))
        return false;
    ChangeSelection(view, SelectionKind::Invert, std::move(region));
    return true;
}
