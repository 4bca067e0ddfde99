// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/PixelEditCommand.h"

namespace {

constexpr Str kNames[] = {Str::UndoTrim,      Str::UndoDelete, Str::UndoCut,
                          Str::UndoPaintLine, Str::UndoFlood,  Str::UndoRotate};

} // namespace

CPixelEditCommand::CPixelEditCommand(PixelEditKind kind) : CPictureCommand(kNames[static_cast<size_t>(kind)])
{
}
