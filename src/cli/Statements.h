// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Arguments.h"
#include "cli/Session.h"

#include <span>
#include <string>
#include <string_view>

/// Whether a statement acts on the current document; without one it is refused.
enum class Needs { Nothing, Document };

/// One row of the statement table: the script language and its help are made from it.
struct StatementRow {
    std::string_view name;      ///< one word, or two: "print canvas"
    std::string_view arguments; ///< their form, as help shows it
    std::string_view help;      ///< one sentence
    Needs needs;
    Outcome (*run)(CSession& session, CArguments& arguments);
};

/// Rows that belong together.
struct StatementFamily {
    std::string_view title;
    std::span<const StatementRow> rows;
};

/// The whole statement table, in the order in which help shows it.
[[nodiscard]] std::span<const StatementFamily> StatementTable();
/// The row that the first words of a line name; none when there is no such statement.
[[nodiscard]] const StatementRow* FindStatement(std::span<const std::string> words);
/// The words that make up the row's name.
[[nodiscard]] size_t WordCount(const StatementRow& row);
/// The whole form of a statement: name and arguments.
[[nodiscard]] std::string FormOf(const StatementRow& row);
