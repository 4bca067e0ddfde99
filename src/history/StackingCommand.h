// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/ObjectListCommand.h"

enum class StackingKind { MoveToFront, MoveToBack, MoveForward, MoveBackward };

/// Swaps the stacking order with the stored one and selects exactly the objects of the stored selection.
class CStackingCommand final : public CExchangeCommand {
public:
    CStackingCommand(StackingKind kind, const CObjectCanvas& canvas);
    void VisitParts(ICommandParts& parts) const override { m_list.VisitParts(parts, OtherFlags::Clear); }

protected:
    void Exchange() override { m_list.Exchange(*Document(), OtherFlags::Clear); }

private:
    CListExchange m_list;
};
