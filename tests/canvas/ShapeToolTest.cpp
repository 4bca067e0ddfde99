// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ConstrainedPoint.h"
#include "canvas/PixoluneView.h"
#include "support/TestDocument.h"

namespace {

struct ShapeToolTest : testing::Test {
    ShapeToolTest() : view(test.doc)
    {
        view.SetClientSize({44, 34});
        test.settings.Set(Setting::FillInsideShape, 1);
        test.settings.Set(Setting::PaintForeColor, 0x0000FF);
    }
    MouseInput At(int x, int y, MouseButton button = MouseButton::Left) const
    {
        return {view.Geometry().ToClient(Point{x, y}), button};
    }
    void Drag(Point from, Point to, MouseButton button = MouseButton::Left)
    {
        view.Press(At(from.x, from.y, button));
        view.Move(At(to.x, to.y, button));
        view.Release(At(to.x, to.y, button));
    }
    void Click(int x, int y)
    {
        view.Press(At(x, y));
        view.Release(At(x, y));
    }
    const CPicObject& Top() const { return *test.doc.Canvas().objects.Top(); }
    TestDocument test;
    CPixoluneView view;
};

TEST_F(ShapeToolTest, EachShapeIsOneObjectAndOneStep)
{
    test.settings.Set(Setting::ShapeOpacity, 40);
    view.SetMode(ToolMode::Rectangle);
    Drag({20, 15}, {5, 5}, MouseButton::Right);
    EXPECT_EQ(Top().Rectangle(), (Rect{5, 5, 20, 15})) << "whichever way it was dragged";
    EXPECT_EQ(PixelOf(Top().image->Dib(), 3, 3), 0xFFFFFFFFu)
        << "the right button takes the background colour";
    EXPECT_EQ(Top().transparency, 40);
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo paint rectangle");
    view.SetMode(ToolMode::Ellipse);
    Drag({0, 0}, {10, 6});
    EXPECT_EQ(PixelOf(Top().image->Dib(), 5, 3), 0xFFFF0000u);
    EXPECT_EQ(test.Stack(), "1 2*");
    Drag({3, 3}, {3, 9});
    EXPECT_EQ(test.doc.History().UndoList().size(), 2u) << "nothing without a width";
    view.Press(At(1, 1));
    view.Move(At(9, 9));
    EXPECT_TRUE(view.CancelDrag());
    EXPECT_EQ(test.Stack(), "1 2*");
}

TEST_F(ShapeToolTest, PolygonsCloseByDoubleClickEnterOrTheFirstVertex)
{
    view.SetMode(ToolMode::Polygon);
    const auto triangle = [&] {
        Click(5, 5);
        Click(25, 5);
        Click(30, 30);
        view.Key(ToolKey::Backspace);
        Click(25, 25);
    };
    triangle();
    view.Key(ToolKey::Enter);
    triangle();
    Click(6, 6);
    triangle();
    view.Press(At(25, 25));
    view.DoubleClick(At(25, 25));
    view.Release(At(25, 25));
    EXPECT_EQ(test.Stack(), "1 2 3*");
    for (const Ref<CPicObject>& object : test.doc.Canvas().objects)
        EXPECT_EQ(object->Rectangle(), (Rect{5, 5, 25, 25}));
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo paint polygon");
    EXPECT_FALSE(view.Key(ToolKey::Enter));
}

TEST(ConstrainedPoint, SnapsToSquaresAndSteps)
{
    EXPECT_EQ(SnapSquare({10, 10}, {4, 30}), (Point{-10, 30}));
    EXPECT_EQ(SnapDirection({0, 0}, {100, 4}), (Point{100, 0}));
    EXPECT_EQ(SnapDirection({0, 0}, {50, 48}), (Point{49, 49}));
    EXPECT_EQ(SnapDirection({5, 5}, {5, 5}), (Point{5, 5}));
}

} // namespace
