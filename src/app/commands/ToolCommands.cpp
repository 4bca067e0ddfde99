// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

template <ToolMode mode> bool SelectTool(CommandContext& context)
{
    context.view->SetMode(mode);
    return true;
}

template <ToolMode mode> bool IsTool(const CommandContext& context)
{
    return HasView(context) && context.view->Mode() == mode;
}

template <ToolMode mode>
constexpr CommandRow ToolRow(CommandId id, std::string_view prompt, std::string_view name,
                             std::string_view shortcut, std::string_view icon)
{
    return {id, "Tools", 0, name, prompt, name, shortcut, icon, HasView, IsTool<mode>, SelectTool<mode>};
}

constexpr CommandRow kRows[] = {
    ToolRow<ToolMode::Default>(ToolDefault, "Default mode", "Default Mode", "V", "tool-default"),
};

} // namespace

std::span<const CommandRow> ToolCommands()
{
    return kRows;
}
