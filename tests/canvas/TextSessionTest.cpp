// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextSession.h"

#include "canvas/PixoluneView.h"
#include "document/ObjectOperations.h"
#include "document/PlacementOperations.h"
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

/// An object that shows "W" and what a double click on it asks for.
struct WrittenTextTest : TextSessionTest {
    WrittenTextTest()
    {
        test.settings.Set(Setting::BannerSingleColor, 0x0000FF);
        EXPECT_TRUE(CTextSession(view, {2, 2}).Ok(Style("W")));
        object = test.doc.Canvas().objects.Top();
        firstPicture = object->image->Dib().Duplicate();
        firstPlace = {object->x, object->y};
    }
    void OnTextObject(const Ref<CPicObject>& asked) override { session.emplace(view, asked); }
    [[nodiscard]] const TextStyle* Text() const { return object->image->Dib().WrittenText().get(); }
    /// On an opaque pixel of the letter.
    void DoubleClick()
    {
        const Rect rect = object->Rectangle();
        for (int x = rect.left; x < rect.right; ++x) {
            if (!object->IsHit({x, rect.top + 1}))
                continue;
            Click(x, rect.top + 1);
            view.DoubleClick({view.Geometry().ToClient(Point{x, rect.top + 1}), MouseButton::Left});
            return;
        }
    }
    void ExpectFirstText() const
    {
        EXPECT_TRUE(SameBytes(object->image->Dib(), firstPicture));
        EXPECT_EQ((Point{object->x, object->y}), firstPlace);
        EXPECT_EQ(object->transparency, 0);
        ASSERT_NE(Text(), nullptr);
        EXPECT_EQ(Text()->text, "W");
    }
    Ref<CPicObject> object;
    CPackedDib firstPicture;
    Point firstPlace;
};

TEST_F(WrittenTextTest, ADoubleClickChangesTheTextUnderOneStep)
{
    test.settings.Set(Setting::BannerSingleColor, 0x00FF00);
    test.settings.Set(Setting::TextBlendOpacity, 200);
    DoubleClick();
    ASSERT_TRUE(session);
    EXPECT_EQ(session->InitialStyle().text, "W");
    EXPECT_EQ(TextStyleFromSettings(test.settings).fill.first, 0x0000FFu) << "as it was written";
    TextStyle style = session->InitialStyle();
    style.text = "i\nW";
    test.settings.Set(Setting::TextBlendOpacity, 50);
    session->Preview(Style("WWWWWW"));
    session->Preview(style);
    ASSERT_TRUE(session->Ok(style));
    EXPECT_EQ(test.Stack(), "1*");
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo edit text");
    EXPECT_EQ(test.doc.History().UndoList().size(), 2u);
    EXPECT_EQ(object->transparency, 50);
    EXPECT_EQ(Text()->text, "i\nW");
    EXPECT_EQ((Point{object->x, object->y}),
              (Point{2 + PaintText(style).corner.x, 2 + PaintText(style).corner.y}));
    const CPackedDib second = object->image->Dib().Duplicate();
    test.doc.Undo();
    ExpectFirstText();
    test.doc.Redo();
    EXPECT_TRUE(SameBytes(object->image->Dib(), second));
    EXPECT_EQ(Text()->text, "i\nW");
}

TEST_F(WrittenTextTest, CancelNothingToSeeAndNoChangeRecordNothing)
{
    test.settings.Set(Setting::BannerSingleColor, 0x00FF00);
    DoubleClick();
    ASSERT_TRUE(session);
    session->Preview(Style("other"));
    session.reset();
    ExpectFirstText();
    EXPECT_EQ(test.settings.Get(Setting::BannerSingleColor), 0x00FF00);
    for (const char* text : {" ", "W"}) {
        DoubleClick();
        ASSERT_TRUE(session);
        TextStyle style = session->InitialStyle();
        style.text = text;
        session->Preview(style);
        session->Ok(style);
        ExpectFirstText();
    }
    EXPECT_EQ(test.doc.History().UndoList().size(), 1u);
    session.reset();
    object->locked = true;
    DoubleClick();
    EXPECT_FALSE(session);
    EXPECT_TRUE(test.ui.TakeMessages().empty());
}

TEST_F(WrittenTextTest, MovedAndDuplicatedTextsStayTextsPaintedOnesDoNot)
{
    object->SetSelected(true);
    NudgeObjects(test.doc, 1, 0);
    EXPECT_NE(Text(), nullptr);
    DuplicateObjects(test.doc);
    EXPECT_NE(test.doc.Canvas().objects.Top()->image->Dib().WrittenText(), nullptr);
    test.doc.Undo();
    test.doc.Undo();
    test.settings.Set(Setting::AllowPaintTransparence, 0);
    const Point inside{object->x + object->Size().width / 2, object->y + object->Size().height / 2};
    for (const ToolMode mode : {ToolMode::Pencil, ToolMode::Erase, ToolMode::FloodFill}) {
        SCOPED_TRACE(static_cast<int>(mode));
        object->SetSelected(true);
        view.SetMode(mode);
        if (mode != ToolMode::FloodFill) {
            view.Press({view.Geometry().ToClient(inside), MouseButton::Left});
            view.CancelDrag();
            ExpectFirstText();
        }
        Click(inside.x, inside.y);
        EXPECT_EQ(Text(), nullptr);
        test.doc.Undo();
        ExpectFirstText();
        test.doc.Redo();
        EXPECT_EQ(Text(), nullptr);
        test.doc.Undo();
    }
}

} // namespace
