// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/TransformCommand.h"

namespace {

constexpr Str kNames[] = {Str::UndoNegative,         Str::UndoGray,      Str::UndoMirrorHorizontally,
                          Str::UndoMirrorVertically, Str::UndoAdjustRgb, Str::UndoAdjustHsl,
                          Str::UndoAdjustBc,         Str::UndoBlur,      Str::UndoGaussianBlur,
                          Str::UndoSharpness,        Str::UndoEmboss,    Str::UndoSunspot};

} // namespace

CTransformCommand::CTransformCommand(TransformKind kind) : CPictureCommand(kNames[static_cast<size_t>(kind)])
{
}
