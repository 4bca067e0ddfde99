// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// One line of a script, taken apart.
struct ScriptLine {
    std::vector<std::string> words; ///< none: an empty line or a comment
    std::string statement;          ///< as it stands in the script, without comment and outer blanks
    std::string error;              ///< why the line cannot be read; empty when it can
};

/// Splits a line into words. Blanks (spaces, tabs, a carriage return at the end) separate them; double
/// quotes hold a word or a part of one together, and `\"` and `\\` stand for a quote and a backslash inside
/// them. A `#` that is the first character, or stands between two blanks, starts a comment; the end of the
/// line counts as a blank.
[[nodiscard]] ScriptLine ParseScriptLine(std::string_view line);
