// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/StackingCommand.h"

namespace {

constexpr Str kNames[] = {Str::UndoMoveToFront, Str::UndoMoveToBack, Str::UndoMoveForward,
                          Str::UndoMoveBackward};

} // namespace

CStackingCommand::CStackingCommand(StackingKind kind, const CObjectCanvas& canvas)
    : CExchangeCommand(kNames[static_cast<size_t>(kind)]), m_list(canvas)
{
}
