// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

std::span<const CommandRow> TransformCommands()
{
    return {};
}
