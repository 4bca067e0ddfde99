// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ScriptRun.h"
#include "platform/codec/Image.h"
#include "support/TestPictures.h"

#include <gtest/gtest.h>

namespace {

/// Three documents' worth of names would hide mistakes: every case runs in a session of its own.
TEST(Statements, PrintWhatTheyDid)
{
    struct Row {
        const char* name;
        std::string script;
        std::string output;
    };
    const Row kCases[] = {
        {"new stores the four settings",
         "new 3 2 #010203\nget NewImageWidth\nget NewImageHeight\nget InitColor\nget InitTransparent\n"
         "new 3 2 transparent\nget InitColor\nget InitTransparent\nprint pixel 0 0\nnew 4 4\nprint pixel 3 3",
         "NewImageWidth 3\nNewImageHeight 2\nInitColor 197121\nInitTransparent 0\n"
         "InitColor 197121\nInitTransparent 1\n1 2 3 0\n1 2 3 0\n"},
        {"set follows the range rule",
         "set JPGQuality 150\nget JPGQuality\nset BannerFillMode 9\nget BannerFillMode\n"
         "set PaintShapeWidth -4\nget PaintShapeWidth",
         "JPGQuality 85\nBannerFillMode 1\nPaintShapeWidth -4\n"},
        {"canvas and objects",
         "new 5 4 #336699\nnew-object\nhide 0\nlock 1\nopacity 1 7\nrename 1 \"a \\\"b\\\" \\\\\"\n"
         "print canvas\nprint objects",
         "canvas 5 4 parameter 0 background 0 delay 0 transparent 0 control 0 descriptor 0 objects 2\n"
         "0 0 0 5 4 visible=0 locked=0 selected=0 transparency=0 \"Obj - 1\"\n"
         "1 0 0 5 4 visible=1 locked=1 selected=1 transparency=7 \"a \\\"b\\\" \\\\\"\n"},
        {"one command for many objects",
         "new 2 2\nnew-object\nnew-object\nhide 0 2 0\nunlock 0 1\nprint history\nselect all\n"
         "delete-objects\nprint history",
         "undo \"Undo new object\"\nundo \"Undo new object\"\nundo \"Undo show/hide object(s)\"\n"
         "undo \"Undo new object\"\nundo \"Undo new object\"\nundo \"Undo show/hide object(s)\"\n"
         "undo \"Undo delete object(s)\"\n"},
        {"history and menu",
         "new 2 2\nprint menu\nnew-object\nresize 4 4\nhide 0\nundo 2\nprint history\nprint menu\nredo 2\n"
         "print menu",
         "undo-item disabled \"Can't &Undo\"\nredo-item disabled \"Can't &Redo\"\n"
         "undo \"Undo new object\"\nredo \"Redo Resize animation\"\nredo \"Redo show/hide object(s)\"\n"
         "undo-item enabled \"Undo new object\"\nredo-item enabled \"Redo Resize animation\"\n"
         "undo-item enabled \"Undo show/hide object(s)\"\nredo-item disabled \"Can't &Redo\"\n"},
        {"documents keep their numbers and views",
         "new 1 1\nzoom 3\nnew 2 2\nnew 3 3\ndocument 2\nclose\ndrag 0 0\nprint canvas\nnew 4 4\nclose\n"
         "print canvas\ndocument 1\nclose\nprint canvas\npointer client\ndrag 400 300\nprint status\nclose\n"
         "answer no",
         "canvas 1 1 parameter 0 background 0 delay 0 transparent 0 control 0 descriptor 0 objects 1\n"
         "canvas 3 3 parameter 0 background 0 delay 0 transparent 0 control 0 descriptor 0 objects 1\n"
         "canvas 3 3 parameter 0 background 0 delay 0 transparent 0 control 0 descriptor 0 objects 1\n"
         "\" x=2 y=2\"\n"},
        {"answers stay", "new 2 2\nanswer no\ndelete\ndelete\nanswer yes\ndelete\nprint history",
         "question: Are you sure clear the selection?\nquestion: Are you sure clear the selection?\n"
         "question: Are you sure clear the selection?\nundo \"Undo delete\"\n"},
        {"pixels",
         "new 2 2 #0a141e\nopacity 0 200\nprint pixel 1 1\nprint object-pixel 0 1 1\nprint pixel 2 0\n"
         "print object-pixel 0 -1 0\nhide 0\nprint pixel 1 1",
         "10 20 30 55\n10 20 30 255\n0 0 0 0\n0 0 0 0\n0 0 0 0\n"},
        {"mouse",
         "new 20 20\nstroke 5 5 8 9 9 9\npress 12 12\nrelease 12 12\nprint objects\nprint history\n"
         "print status\npress 15 15 ctrl\nrelease 15 15 ctrl\nprint objects",
         "0 4 4 20 20 visible=1 locked=0 selected=1 transparency=0 \"Obj - 1\"\nundo \"Undo move "
         "object(s)\"\n"
         "\" x=9 y=9\"\n0 4 4 20 20 visible=1 locked=0 selected=0 transparency=0 \"Obj - 1\"\n"},
        {"values of a dialog",
         "new 2 2 #102030\nred-green-blue 1 -255 255\nprint pixel 0 0\nred-green-blue 0 0 0\nblur 2\nrotate "
         "360\n"
         "mirror vertically\nundo 2\nprint pixel 0 0\nprint history",
         "17 0 255 255\n16 32 48 255\nredo \"Redo Adjust red/green/blue\"\nredo \"Redo Mirror "
         "vertically\"\n"},
        {"a dialog's command ends a drag",
         "new 8 8\ntool erase\npress 1 1\ndrag 5 5\nblur 5\nrelease 6 3\npress 1 1\ndrag 5 5\nresize 9 9\n"
         "print history",
         "undo \"Undo erase\"\nundo \"Undo Blur\"\nundo \"Undo erase\"\nundo \"Undo Resize animation\"\n"},
        {"text inside the document only",
         "new 60 40\ntext 5 5 \"Ab\" size=12 smooth=0 vertical=1\ntext 60 5 Ab\ntext 5 5 \"\"\nget "
         "BannerSmooth\n"
         "get BannerVertical\nprint history",
         "BannerSmooth 0\nBannerVertical 1\nundo \"Undo add text\"\n"},
        {"selection confines a fill",
         "new 64 48 #336699\ntool rectangular-selection\nstroke 8 8 40 30\nprint selection\n"
         "set PaintForeColor 255          # a COLORREF\ntool flood-fill\nclick 10 10\nprint history\n"
         "print pixel 39 29\nprint pixel 40 30\nprint picked 9 9\nprint picked 64 0\nundo\n"
         "print pixel 39 29\ninvert-selection\nprint selection\nunselect-all\nprint selection",
         "selection 8 8 40 30 pixels 704\nundo \"Undo Rectangular Selection\"\nundo \"Undo flood\"\n"
         "255 0 0 255\n51 102 153 255\n255 0 0 0\nnone 255\n51 102 153 255\n"
         "selection 0 0 64 48 pixels 2368\nselection none\n"},
        {"polygon closed by a double click",
         "new 60 40\ntool polygon\nclick 10 10\nclick 40 10\ndouble-click 25 30\nprint history\n"
         "tool pick-color\nclick 5 5 right\nget PaintBackgndColor",
         "undo \"Undo paint polygon\"\nPaintBackgndColor 16777215\n"},
        {"properties",
         "new 4 4 #102030\nproperties name=a left=5 top=-3 width=2 transparency=9 locked=1\nprint objects\n"
         "properties 0 locked=0 left=1\nundo 2\nprint objects\nprint history",
         "0 5 -3 2 4 visible=1 locked=1 selected=1 transparency=9 \"a\"\n"
         "0 0 0 4 4 visible=1 locked=0 selected=1 transparency=0 \"Obj - 1\"\n"
         "redo \"Redo modify object's properties\"\nredo \"Redo modify object's properties\"\n"},
        {"modified", "new 2 2\nprint modified\nhide 0\nprint modified", "modified 0\nmodified 1\n"},
        {"clipboard across documents",
         "new 6 6 #112233\ncopy\nnew 4 4\npaste\nprint objects\nprint selection",
         "0 0 0 4 4 visible=1 locked=0 selected=0 transparency=0 \"Obj - 2\"\n"
         "1 0 0 6 6 visible=1 locked=0 selected=1 transparency=0 \"Obj - 3\"\nselection none\n"},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const ScriptResult result = RunText(row.script);
        EXPECT_EQ(result.output, row.output);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, 0);
    }
}

TEST(Statements, DocumentPointsReachTheirPixelAtEveryZoomAndScroll)
{
    for (const int zoom : {1, 2, 3, 8, -2, -8}) {
        const std::string head = "new 600 500\nzoom " + std::to_string(zoom) + "\nscroll 37 51\n";
        // A reduced view shows every n-th pixel only.
        const int step = zoom < 0 ? -zoom : 1;
        for (const Point point :
             {Point{0, 0}, Point{7, 3}, Point{599, 499}, Point{-1, -9}, Point{700, 1000}}) {
            const std::string x = std::to_string(point.x * step);
            const std::string y = std::to_string(point.y * step);
            const ScriptResult result = RunText(head + "drag " + x + " " + y + "\nprint status");
            EXPECT_EQ(result.output, "\" x=" + x + " y=" + y + "\"\n") << zoom;
        }
    }
}

TEST(Statements, ExportWhatIsShown)
{
    const CTemporaryFolder folder;
    const auto path = [&](const char* name) { return folder.File(name).string(); };
    const ScriptResult result =
        RunText("new 3 2 #102030\nset InitColor 16711680\nnew 3 2 transparent\nadd " + path("none.png") +
                    "\nexport-frame " + path("frame.png") + "\nview 5 9\nzoom 2\nexport-view " +
                    path("view.png") + "\ndocument 1\nexport-object 0 " + path("object.png") +
                    "\nexport-selection " + path("selection.png"),
                true);
    EXPECT_EQ(result.status, 1);
    const auto load = [&](const char* name) { return CImage::LoadPNGFile(folder.File(name), nullptr); };
    EXPECT_TRUE(SameBytes(load("frame.png"), UniformDib(3, 2, 0x000000FF)));
    EXPECT_TRUE(SameBytes(load("object.png"), UniformDib(3, 2, 0xFF102030)));
    const CPackedDib view = load("view.png");
    ASSERT_FALSE(view.IsEmpty());
    EXPECT_EQ(view.Size(), (Size{5, 9}));
    const CPackedDib selection = load("selection.png");
    ASSERT_FALSE(selection.IsEmpty());
    EXPECT_EQ(selection.Size(), (Size{3, 2}));
}

TEST(Statements, ExportAnAnimation)
{
    const CTemporaryFolder folder;
    const std::string gif = folder.File("a.gif").string();
    const std::string script = "new 8 6 #102030\nnew-object\nexport-animation " + gif + " loop=2 delay=7\n";
    EXPECT_EQ(RunText(script + "open " + gif + "\nprint canvas").output,
              "canvas 8 6 parameter 0 background 0 delay 7 transparent 1 control 9 descriptor 0 objects 2\n");
    const ScriptResult hidden = RunText(script + "hide 0 1\nexport-animation " + gif, true);
    EXPECT_EQ(hidden.errors, "refused: export-animation " + gif + "\n");
}

} // namespace
