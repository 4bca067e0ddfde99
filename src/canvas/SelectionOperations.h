// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionCommand.h"

class CPixoluneView;

/// Records a change of the view's selection under the name of its kind and makes it.
void ChangeSelection(CPixoluneView& view, SelectionKind kind, CRegion region);

/// The commands of the Edit menu. Unselect All needs a selection. Inverting none selects everything. False
/// when memory runs out; nothing has changed then.
bool SelectAll(CPixoluneView& view);
bool UnselectAll(CPixoluneView& view);
bool InvertSelection(CPixoluneView& view);
