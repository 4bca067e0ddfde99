// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"
#include "imageops/ImmediateTransform.h"

namespace {

using enum CommandId;

template <TransformKind kind> bool Immediate(CommandContext& context)
{
    return RunImmediateTransform(*context.document, kind);
}

constexpr CommandRow kRows[] = {
    {TransformGray, "Transform", 0, "&Gray", "Gray all selected objects", "Gray", "", "gray", HasDocument,
     nullptr, Immediate<TransformKind::Gray>},
    {TransformNegative, "Transform", 0, "&Negative", "Creates Negatives of selected object(s)", "Negative",
     "Ctrl+I", "negative", HasDocument, nullptr, Immediate<TransformKind::Negative>},
    {TransformMirrorHorizontally, "Transform", 0, "Mirror &horizontally",
     "Mirrors all selected objects horizontally", "Mirror horizontally", "", "mirror-horizontally",
     HasDocument, nullptr, Immediate<TransformKind::MirrorHorizontally>},
    {TransformMirrorVertically, "Transform", 0, "Mirror &vertically",
     "Mirrors all selected objects vertically", "Mirror vertically", "", "mirror-vertically", HasDocument,
     nullptr, Immediate<TransformKind::MirrorVertically>},
};

} // namespace

std::span<const CommandRow> TransformCommands()
{
    return kRows;
}
