// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/CanvasToolTest.h"
#include "canvas/SelectionOperations.h"

#include <memory>

namespace {

constexpr MouseInput kShift{.client = {}, .button = MouseButton::Left, .shift = true};
constexpr MouseInput kCtrl{.client = {}, .button = MouseButton::Left, .ctrl = true};
constexpr MouseInput kBoth{.client = {}, .button = MouseButton::Left, .shift = true, .ctrl = true};

struct SelectionToolTest : CanvasToolTest {
    [[nodiscard]] int64_t Area() const { return view.Selection().Area(); }
};

TEST_F(SelectionToolTest, KeysOfTheReleaseDecideHowShapesJoin)
{
    view.SetMode(ToolMode::RectangularSelection);
    struct Row {
        const char* name;
        MouseInput keys;
        int64_t area;
        bool keepsOld;
    };
    for (const Row& row : {Row{"replace", {}, 100, false}, Row{"add", kShift, 175, true},
                           Row{"only what is new", kCtrl, 75, false}, Row{"both", kBoth, 75, false}}) {
        SCOPED_TRACE(row.name);
        view.SetSelection(CRegion());
        Stroke({{10, 10}, {0, 0}});
        ASSERT_EQ(Area(), 100);
        Stroke({{15, 15}, {5, 5}}, MouseButton::Left, row.keys);
        EXPECT_EQ(Area(), row.area);
        EXPECT_EQ(view.Selection().Contains(Point{2, 2}), row.keepsOld);
        EXPECT_EQ(UndoName(), "Undo Rectangular Selection");
    }
    view.SetSelection(CRegion(Rect{0, 0, 20, 20}));
    Stroke({{25, 2}, {22, 4}, {20, 2}, {3, 5}}, MouseButton::Left, kCtrl);
    EXPECT_EQ(view.Selection().Bounds(), (Rect{20, 2, 25, 5})) << "dragged from outside over the old one";
}

TEST_F(SelectionToolTest, ClicksClearAndAreRecorded)
{
    for (const ToolMode mode : {ToolMode::RectangularSelection, ToolMode::EllipticalSelection}) {
        view.SetMode(mode);
        Stroke({{4, 4}, {12, 14}});
        const CRegion before = view.Selection();
        const size_t steps = Steps();
        Stroke({{20, 20}});
        EXPECT_TRUE(view.Selection().IsEmpty());
        EXPECT_EQ(Steps(), steps + 1);
        EXPECT_EQ(UndoName(), mode == ToolMode::RectangularSelection ? "Undo Rectangular Selection"
                                                                     : "Undo Elliptic Selection");
        test.doc.Undo();
        EXPECT_TRUE(view.Selection() == before);
        view.SetSelection(CRegion());
    }
}

TEST_F(SelectionToolTest, LassoSelectsTheInsideOfItsPath)
{
    view.SetMode(ToolMode::LassoSelection);
    Stroke({{2, 2}, {12, 2}, {12, 12}, {2, 12}});
    EXPECT_TRUE(view.Selection() == CRegion(Rect{2, 2, 12, 12}));
    EXPECT_EQ(UndoName(), "Undo Lasso Selection");
    view.SetSelection(CRegion());
    view.Press(At({2, 2}));
    view.Move(At({12, 2}));
    view.Move(At({12, 12}));
    view.Release(At({2, 12}));
    EXPECT_FALSE(view.Selection().Contains(Point{3, 11})) << "the path ends with the last move";
    EXPECT_TRUE(view.Selection().Contains(Point{11, 3}));
}

TEST_F(SelectionToolTest, WandReadsTheFrameAndClearsOutsideIt)
{
    test.Add(UniformDib(10, 10, 0xFF204060), 0, 0);
    test.Add(UniformDib(10, 10, 0xFF204070), 10, 0);
    test.Add(UniformDib(5, 5, 0xFF204060), 30, 20);
    view.SetMode(ToolMode::MagicWandSelection);
    test.settings.Set(Setting::Similarity, 15);
    Stroke({{3, 3}});
    EXPECT_EQ(Area(), 100) << "one channel is 16 off";
    test.settings.Set(Setting::Similarity, 16);
    view.SetSelection(CRegion());
    Stroke({{3, 3}});
    EXPECT_EQ(Area(), 200);
    test.settings.Set(Setting::ConnectedPixelsMagicWand, 0);
    view.SetSelection(CRegion());
    Stroke({{3, 3}});
    EXPECT_EQ(Area(), 225);
    const size_t steps = Steps();
    Stroke({{-1, 3}});
    EXPECT_TRUE(view.Selection().IsEmpty());
    EXPECT_EQ(Steps(), steps + 1);
    Stroke({{-1, 3}});
    EXPECT_EQ(Steps(), steps + 1) << "nothing to clear";
}

TEST_F(SelectionToolTest, DragsInsideMoveTheSelection)
{
    struct Row {
        const char* name;
        int zoom;
        Point by; ///< client pixels
        Point moved;
    };
    for (const Row& row :
         {Row{"actual size", 1, {3, -2}, {3, -2}}, Row{"less than a pixel", 4, {3, -3}, {0, 0}},
          Row{"magnified", 4, {9, -4}, {2, -1}}, Row{"reduced", -2, {1, 2}, {2, 4}}}) {
        SCOPED_TRACE(row.name);
        view.SetMode(ToolMode::RectangularSelection);
        view.SetZoom(row.zoom);
        const CRegion start(Rect{4, 4, 12, 12});
        view.SetSelection(start);
        const size_t steps = Steps();
        MouseInput input = At({6, 6});
        EXPECT_EQ(view.CurrentTool().Cursor({6, 6}), CursorShape::MoveSelection);
        view.Press(input);
        input.client = {input.client.x + row.by.x, input.client.y + row.by.y};
        view.Move(input);
        EXPECT_TRUE(view.Selection() == start) << "only the outline moves";
        view.Release(input);
        CRegion expected = start;
        ASSERT_TRUE(expected.Translate(row.moved.x, row.moved.y));
        EXPECT_TRUE(view.Selection() == expected);
        EXPECT_EQ(Steps(), steps + (row.moved == Point() ? 0 : 1));
        if (row.moved == Point())
            continue;
        EXPECT_EQ(UndoName(), "Undo Move Selection");
        test.doc.Undo();
        EXPECT_TRUE(view.Selection() == start);
        EXPECT_EQ(test.doc.History().RedoItem().text, "Undo Move Selection");
        test.doc.Redo();
        EXPECT_TRUE(view.Selection() == expected);
    }
}

TEST_F(SelectionToolTest, CommandsSelectAllNoneAndTheRest)
{
    const CRegion all(Rect{0, 0, 40, 30});
    EXPECT_TRUE(InvertSelection(view));
    EXPECT_TRUE(view.Selection() == all) << "none inverted is all";
    EXPECT_TRUE(UnselectAll(view));
    EXPECT_EQ(UndoName(), "Undo Unselect All");
    EXPECT_TRUE(SelectAll(view));
    EXPECT_TRUE(view.Selection() == all);
    view.SetSelection(CRegion(Rect{-5, -5, 10, 40}));
    EXPECT_TRUE(InvertSelection(view));
    EXPECT_TRUE(view.Selection() == CRegion(Rect{10, 0, 40, 30}));
    EXPECT_EQ(UndoName(), "Undo Invert");
    test.doc.Undo();
    EXPECT_EQ(test.doc.History().RedoItem().text, "Redo Invert");
    EXPECT_TRUE(view.Selection() == CRegion(Rect{-5, -5, 10, 40}));
}

TEST_F(SelectionToolTest, CancelledDragsChangeNothing)
{
    view.SetSelection(CRegion(Rect{4, 4, 12, 12}));
    for (const Point from : {Point{6, 6}, Point{20, 20}}) {
        view.SetMode(ToolMode::EllipticalSelection);
        view.Press(At(from));
        view.Move(At({30, 25}));
        EXPECT_TRUE(view.CancelDrag());
        view.Release(At({30, 25}));
        EXPECT_TRUE(view.Selection() == CRegion(Rect{4, 4, 12, 12}));
    }
    EXPECT_EQ(Steps(), 0u);
}

TEST(SelectionCommand, SurvivesItsView)
{
    TestDocument test;
    auto view = std::make_unique<CPixoluneView>(test.doc);
    SelectAll(*view);
    view->SetMode(ToolMode::RectangularSelection);
    view->SetClientSize({44, 34});
    view->Press({view->Geometry().ToClient(Point{5, 5}), MouseButton::Left});
    view->Release({view->Geometry().ToClient(Point{9, 5}), MouseButton::Left});
    ASSERT_EQ(test.doc.History().UndoList().size(), 2u);
    view.reset();
    EXPECT_TRUE(test.doc.Undo() && test.doc.Undo() && test.doc.Redo() && test.doc.Redo());
}

} // namespace
