// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Statements.h"

#include "cli/statements/StatementFamilies.h"

#include <algorithm>

namespace {

const StatementRow* FindByName(std::string_view name)
{
    for (const StatementFamily& family : StatementTable()) {
        const auto row = std::ranges::find(family.rows, name, &StatementRow::name);
        if (row != family.rows.end())
            return &*row;
    }
    return nullptr;
}

} // namespace

std::span<const StatementFamily> StatementTable()
{
    static const StatementFamily kFamilies[] = {
        {"Documents", DocumentStatements()},
        {"Settings, answers, output", SessionStatements()},
        {"Objects panel", PanelStatements()},
        {"Properties dialog", PropertiesStatements()},
        {"Objects and canvas", ObjectStatements()},
        {"Transforms", TransformStatements()},
        {"Editing", EditStatements()},
        {"View and tools", ViewStatements()},
        {"Mouse", MouseStatements()},
        {"Text", TextStatements()},
        {"Printing", PrintStatements()},
        {"Exporting", ExportStatements()},
    };
    return kFamilies;
}

const StatementRow* FindStatement(std::span<const std::string> words)
{
    if (words.size() > 1) {
        if (const StatementRow* row = FindByName(words[0] + " " + words[1]))
            return row;
    }
    return FindByName(words[0]);
}

size_t WordCount(const StatementRow& row)
{
    return 1 + static_cast<size_t>(std::ranges::count(row.name, ' '));
}

std::string FormOf(const StatementRow& row)
{
    std::string form(row.name);
    if (!row.arguments.empty())
        form.append(" ").append(row.arguments);
    return form;
}
