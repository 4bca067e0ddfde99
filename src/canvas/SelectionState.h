// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/memory/SharedObj.h"
#include "platform/region/Region.h"

class CPixoluneView;

/// A view's selection. Commands hold it too: undoing one whose view has been closed finds no view and
/// changes nothing that anybody sees.
class CSelectionState final : public CSharedObj {
public:
    CRegion region;                ///< document pixels; empty: nothing is selected
    CPixoluneView* view = nullptr; ///< none once the view is closed
};
