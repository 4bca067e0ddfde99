// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ScriptRun.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kNew = "new 8 6 #336699\n";

TEST(ScriptRunner, EndsWithTheStatusOfWhatHappened)
{
    struct Row {
        const char* name;
        std::string script;
        bool keepGoing;
        std::string output;
        std::string errors;
        int status;
    };
    const std::string inFront = "message: Your selected object(s) has/have been in front!\n";
    const Row kCases[] = {
        {"all done", "echo a  \"b  c\"\n# x\n\necho", false, "a b  c\n\n", "", 0},
        {"byte order mark",
         "\xEF\xBB\xBF"
         "echo a",
         false, "a\n", "", 0},
        {"without a document", "undo\necho a", false, "", "refused: undo\n", 1},
        {"disabled", kNew + std::string(" undo  # nothing\necho a"), false, "", "refused: undo\n", 1},
        {"disabled, going on", kNew + std::string("undo\necho a"), true, "a\n", "refused: undo\n", 1},
        {"message", kNew + std::string("move-to-front\necho a"), false, inFront, "", 1},
        {"message, going on", kNew + std::string("move-to-front\necho a"), true, inFront + "a\n", "", 1},
        {"nothing to do is no refusal", kNew + std::string("align left\nshow 0\necho a"), false, "a\n", "",
         0},
        {"a step too many", kNew + std::string("new-object\nundo 2\nprint modified"), true, "modified 1\n",
         "refused: undo 2\n", 1},
        {"empty clipboard", kNew + std::string("paste"), false, "", "refused: paste\n", 1},
        {"unknown statement", "echo a\nfrobnicate 1\necho b", true, "a\n",
         "s:2: unknown statement \"frobnicate\"\n", 2},
        {"error after a refusal", "undo\nnonsense", true, "",
         "refused: undo\ns:2: unknown statement \"nonsense\"\n", 2},
        {"open quote", "\n\necho \"a", true, "", "s:3: closing quote is missing\n", 2},
        {"disabled control", kNew + std::string("lock 0\nproperties name=b left=3\nprint objects"), true,
         "0 0 0 8 6 visible=1 locked=1 selected=1 transparency=0 \"Obj - 1\"\n",
         "refused: properties name=b left=3\n", 1},
        {"no object for the dialog", kNew + std::string("select none\nproperties left=3"), false,
         "message: A object must be selected at least!\n", "", 1},
        {"save that fails", kNew + std::string("save-as /nowhere/at.cur hotspot=1,2"), false,
         "message: Save to file /nowhere/at.cur fail!\n", "", 1},
        {"cannot be written", kNew + std::string("export-frame /nowhere/at/all.png\necho a"), true, "a\n",
         "s:2: cannot write \"/nowhere/at/all.png\"\n", 1},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const ScriptResult result = RunText(row.script, row.keepGoing);
        EXPECT_EQ(result.output, row.output);
        EXPECT_EQ(result.errors, row.errors);
        EXPECT_EQ(result.status, row.status);
    }
}

TEST(ScriptRunner, DoesNothingOfAStatementWithAWrongArgument)
{
    const char* const kStatements[] = {
        "new 0 5",
        "new 5 2001",
        "new 5",
        "new 5 5 #12345",
        "new 5 5 #1234567",
        "new 5 5 #12345g",
        "new 5 5 red",
        "new 5 5 transparent x",
        "new 5.0 5",
        "new 99999999999999999999 5",
        "document 2",
        "document 0",
        "select 0 1",
        "select -1",
        "select",
        "select all 0",
        "hide",
        "hide 0 x",
        "opacity 0 256",
        "opacity 0",
        "rename 0",
        "rename 1 a",
        "resize 0 1",
        "resize 2001 1",
        "undo 0",
        "undo x",
        "zoom 0",
        "zoom -1",
        "zoom 9",
        "zoom",
        "view 0 10",
        "scroll 1",
        "tool brush",
        "pointer window",
        "press 1",
        "press 1 2 middle",
        "press 1 2 left 3",
        "stroke",
        "stroke 1 2 3",
        "align middle",
        "center",
        "answer maybe",
        "set NoSuchName 1",
        "set JPGQuality",
        "set JPGQuality 5x",
        "get",
        "print",
        "print everything",
        "print object-pixel 1 0 0",
        "export-object 1 x.png",
        "export-frame",
        "export-animation a.bmp",
        "export-animation a.gif loop=65536",
        "export-animation a.gif palette=two",
        "blur 0",
        "blur 51",
        "blur",
        "emboss 0 16 0",
        "red-green-blue 1 2",
        "rotate 361",
        "mirror",
        "text 1 1",
        "text 1 1 a size=0",
        "text 1 1 a smooth=2",
        "text 1 1 a bold=1",
        "text 1 1 a font",
        "save-as",
        "save-as none",
        "save-as a.xyz",
        "save-as a.png colors=high",
        "save-as a.bmp colors=many",
        "save-as a.bmp hotspot=1,2",
        "save-as a.cur hotspot=1",
        "save-as a.cur hotspot=1,-2",
        "properties 1",
        "properties left=1001",
        "properties width=0",
        "properties width=2001",
        "properties visible=2",
        "properties transparency=256",
        "properties name",
        "properties left=1 0",
        "properties name=1234567890123456789012345678901234567890123456789",
        "close now",
        "select-all x",
    };
    const std::string show = "print canvas\nprint objects\nprint history\nget NewImageWidth\n";
    const std::string expected = RunText(kNew + show).output;
    for (const std::string statement : kStatements) {
        SCOPED_TRACE(statement);
        std::istringstream begin(kNew);
        std::istringstream wrong(statement);
        std::istringstream end(show);
        std::ostringstream output;
        std::ostringstream errors;
        CSession session(output);
        ASSERT_EQ(RunScript(session, begin, {"s", true}, errors), 0);
        EXPECT_EQ(RunScript(session, wrong, {"s", true}, errors), 2);
        EXPECT_TRUE(errors.str().starts_with("s:1: ")) << errors.str();
        ASSERT_EQ(RunScript(session, end, {"s", true}, errors), 0);
        EXPECT_EQ(output.str(), expected);
    }
}

} // namespace
