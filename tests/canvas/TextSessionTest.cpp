// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextSession.h"

#include "canvas/PixoluneView.h"
#include "support/TestDocument.h"

namespace {

/// Opens a session where the text tool was clicked, as a window does.
struct TextSessionTest : testing::Test, IViewHost {
    TextSessionTest() : view(test.doc, this)
    {
        view.SetClientSize({44, 34});
        view.SetMode(ToolMode::Text);
    }
    void OnTextPoint(Point point) override { session.emplace(view, point); }
    void Click(int x, int y)
    {
        view.Press({view.Geometry().ToClient(Point{x, y}), MouseButton::Left});
        view.Release({view.Geometry().ToClient(Point{x, y}), MouseButton::Left});
    }
    TextStyle Style(const std::string& text)
    {
        TextStyle style = TextStyleFromSettings(test.settings);
        style.text = text;
        return style;
    }
    TestDocument test;
    CPixoluneView view;
    std::optional<CTextSession> session;
};

TEST_F(TextSessionTest, OkMakesOneObjectWhereThePreviewStood)
{
    test.settings.Set(Setting::TextBlendOpacity, 256 + 30);
    test.settings.Set(Setting::BannerSingleColor, 0x0000FF);
    Click(50, 5);
    EXPECT_FALSE(session) << "outside the document";
    Click(4, 3);
    ASSERT_TRUE(session);
    session->Preview(Style("W"));
    CPackedDib previewed = CPackedDib::Create(44, 34, 32);
    view.Paint(ViewOf(previewed), {0, 0, 44, 34});
    ASSERT_TRUE(session->Ok(Style("W")));
    EXPECT_EQ(test.Stack(), "1*");
    EXPECT_EQ(test.doc.Canvas().objects.Top()->transparency, 30);
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo add text");
    EXPECT_EQ(view.Mode(), ToolMode::Default);
    test.doc.Canvas().DeselectAll();
    CPackedDib added = CPackedDib::Create(44, 34, 32);
    view.Paint(ViewOf(added), {0, 0, 44, 34});
    EXPECT_TRUE(SameBytes(previewed, added));
}

TEST_F(TextSessionTest, NothingToSeeMakesNothingAndCancelLeavesTheTool)
{
    Click(4, 3);
    ASSERT_TRUE(session);
    EXPECT_FALSE(session->Ok(Style("  ")));
    EXPECT_EQ(view.Mode(), ToolMode::Text);
    Click(4, 3);
    session->Preview(Style("W"));
    session->Cancel();
    EXPECT_EQ(view.Mode(), ToolMode::Default);
    EXPECT_EQ(test.Stack(), "");
    EXPECT_FALSE(test.doc.IsModified());
}

} // namespace
