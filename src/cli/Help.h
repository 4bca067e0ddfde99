// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <string>

/// Prints every statement with its arguments and what it does.
void PrintAllStatements(std::ostream& output);
/// Prints the statement with this name, or those whose first word it is; false when there is none.
[[nodiscard]] bool PrintStatement(const std::string& name, std::ostream& output);
