// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Statements.h"

/// The rows of one family each; the statement table joins them.
[[nodiscard]] std::span<const StatementRow> DocumentStatements();
[[nodiscard]] std::span<const StatementRow> SessionStatements();
[[nodiscard]] std::span<const StatementRow> PanelStatements();
[[nodiscard]] std::span<const StatementRow> PropertiesStatements();
[[nodiscard]] std::span<const StatementRow> ObjectStatements();
[[nodiscard]] std::span<const StatementRow> TransformStatements();
[[nodiscard]] std::span<const StatementRow> EditStatements();
[[nodiscard]] std::span<const StatementRow> ViewStatements();
[[nodiscard]] std::span<const StatementRow> MouseStatements();
[[nodiscard]] std::span<const StatementRow> TextStatements();
[[nodiscard]] std::span<const StatementRow> PrintStatements();
[[nodiscard]] std::span<const StatementRow> ExportStatements();

/// Runs a menu command that takes no values.
template <CommandId id> Outcome MenuCommand(CSession& session, CArguments& arguments)
{
    return arguments.Finish() ? session.RunMenuCommand(id) : Outcome::ScriptError;
}

/// The row of a menu command that takes no values.
template <CommandId id> constexpr StatementRow MenuRow(std::string_view name, std::string_view help)
{
    return {name, "", help, Needs::Document, MenuCommand<id>};
}
