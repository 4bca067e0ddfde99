// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Script.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

TEST(ScriptLine, IsSplitAtBlanksOutsideQuotes)
{
    struct Row {
        const char* name;
        std::string line;
        Words words;
        std::string statement;
    };
    const Row kCases[] = {
        {"nothing", "", {}, ""},
        {"blanks", " \t ", {}, ""},
        {"words", "  press 3\t-4 \r", {"press", "3", "-4"}, "press 3\t-4"},
        {"comment line", "# undo", {}, ""},
        {"comment without blank", "#undo", {}, ""},
        {"indented comment", "   #undo", {}, ""},
        {"comment behind", "undo # 3", {"undo"}, "undo"},
        {"comment at the end", "undo #", {"undo"}, "undo"},
        {"colour", "new 1 2 #336699", {"new", "1", "2", "#336699"}, "new 1 2 #336699"},
        {"number sign in a word", "a# b", {"a#", "b"}, "a# b"},
        {"quoted number sign", "echo \"#\" x", {"echo", "#", "x"}, "echo \"#\" x"},
        {"quoted part", "name=\"two words\"x y", {"name=two wordsx", "y"}, "name=\"two words\"x y"},
        {"empty word", "rename 0 \"\"", {"rename", "0", ""}, "rename 0 \"\""},
        {"escapes", R"("a\"b\\c\d" \e)", {R"(a"b\c\d)", R"(\e)"}, R"("a\"b\\c\d" \e)"},
        {"escaped backslash before the end", R"("\\" x)", {"\\", "x"}, R"("\\" x)"},
        {"comment sign inside quotes", "echo \"a # b\"", {"echo", "a # b"}, "echo \"a # b\""},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const ScriptLine parsed = ParseScriptLine(row.line);
        EXPECT_EQ(parsed.words, row.words);
        EXPECT_EQ(parsed.statement, row.statement);
        EXPECT_EQ(parsed.error, "");
    }
}

TEST(ScriptLine, WithoutClosingQuoteIsAnError)
{
    for (const std::string line : {"echo \"a", "\"", R"(echo "a\")", "echo a\"b c"})
        EXPECT_NE(ParseScriptLine(line).error, "") << line;
}

} // namespace
