// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Help.h"

#include "cli/Statements.h"

namespace {

void PrintRow(const StatementRow& row, std::ostream& output)
{
    output << "  " << FormOf(row) << "\n      " << row.help << '\n';
}

} // namespace

void PrintAllStatements(std::ostream& output)
{
    std::string_view separator;
    for (const StatementFamily& family : StatementTable()) {
        output << separator << family.title << "\n";
        for (const StatementRow& row : family.rows)
            PrintRow(row, output);
        separator = "\n";
    }
}

bool PrintStatement(const std::string& name, std::ostream& output)
{
    bool isFound = false;
    for (const StatementFamily& family : StatementTable()) {
        for (const StatementRow& row : family.rows) {
            if (row.name != name && !row.name.starts_with(name + " "))
                continue;
            PrintRow(row, output);
            isFound = true;
        }
    }
    return isFound;
}
