// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PixoluneView.h"
#include "document/ObjectOperations.h"
#include "support/TestDocument.h"

namespace {

TEST(ViewGeometry, MapsPointsAndCentresSmallPictures)
{
    struct Row {
        const char* name;
        Size document;
        int zoom;
        Size client;
        Point scroll;
        Rect image;
        Point clientPoint;
        Point documentPoint;
    };
    constexpr Row kCases[] = {
        {"centred", {10, 6}, 1, {30, 20}, {0, 0}, {10, 7, 20, 13}, {10, 7}, {0, 0}},
        {"outside reads negative", {10, 6}, 1, {30, 20}, {0, 0}, {10, 7, 20, 13}, {2, 3}, {-8, -4}},
        {"truncates toward zero", {10, 6}, 4, {100, 60}, {0, 0}, {30, 18, 70, 42}, {27, 45}, {0, 6}},
        {"reduced", {3, 3}, -2, {20, 20}, {0, 0}, {9, 9, 10, 10}, {10, 9}, {2, 0}},
        {"scrolled", {100, 100}, 2, {50, 40}, {30, 20}, {2, 2, 202, 202}, {5, 5}, {16, 11}},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const ViewGeometry geometry{row.document, row.zoom, row.client, row.scroll};
        EXPECT_EQ(geometry.ImageRect(), row.image);
        EXPECT_EQ(geometry.ToDocument(row.clientPoint), row.documentPoint);
    }
}

TEST(View, ZoomNeverStandsAtZeroOrMinusOne)
{
    std::vector<int> factors;
    for (int zoom = kMinZoom; zoom != kMaxZoom; zoom = NextZoomIn(zoom)) {
        EXPECT_TRUE(IsZoom(zoom));
        EXPECT_EQ(NextZoomOut(NextZoomIn(zoom)), zoom);
        factors.push_back(zoom);
    }
    EXPECT_EQ(factors.size(), 14u);
}

TEST(View, PaintingAPartEqualsThatPartOfTheWhole)
{
    TestDocument test;
    test.Add(RandomDib(25, 19, 3), -4, 3, true);
    test.Add(RandomDib(30, 40, 4), 12, -7);
    CPixoluneView view(test.doc);
    view.SetClientSize({61, 47});
    for (int zoom = kMinZoom;; zoom = NextZoomIn(zoom)) {
        SCOPED_TRACE(zoom);
        view.SetZoom(zoom);
        view.SetScroll({zoom * 3, zoom * 5});
        CPackedDib whole = CPackedDib::Create(61, 47, 32);
        view.Paint(ViewOf(whole), {0, 0, 61, 47});
        for (const Rect& area : {Rect{0, 0, 1, 1}, Rect{7, 3, 40, 30}, Rect{33, 20, 61, 47}}) {
            CPackedDib part = CPackedDib::Create(area.Width(), area.Height(), 32);
            view.Paint(ViewOf(part), area);
            for (int y = 0; y < area.Height(); ++y) {
                for (int x = 0; x < area.Width(); ++x)
                    ASSERT_EQ(PixelOf(part, x, y), PixelOf(whole, area.left + x, area.top + y))
                        << x << ' ' << y;
            }
        }
        if (zoom == kMaxZoom)
            break;
    }
}

/// Drives the default tool with document coordinates at actual size.
struct DefaultToolTest : testing::Test {
    DefaultToolTest() : view(test.doc)
    {
        view.SetClientSize({44, 34});
        lower = test.Add(UniformDib(10, 10, 0xFF111111), 0, 0);
        upper = test.Add(UniformDib(10, 10, 0xFF222222), 5, 5);
    }
    MouseInput At(int x, int y) const { return {view.Geometry().ToClient(Point{x, y}), MouseButton::Left}; }
    void Click(MouseInput input)
    {
        view.Press(input);
        view.Release(input);
    }
    TestDocument test;
    CPixoluneView view;
    Ref<CPicObject> lower, upper;
};

TEST_F(DefaultToolTest, ClicksSelectAndKeysAddOrToggle)
{
    Click(At(7, 7));
    EXPECT_EQ(test.Stack(), "1 2*");
    MouseInput input = At(1, 1);
    input.shift = true;
    Click(input);
    EXPECT_EQ(test.Stack(), "1* 2*");
    input.shift = false;
    input.ctrl = true;
    Click(input);
    EXPECT_EQ(test.Stack(), "1 2*");
    input = At(7, 7);
    input.alt = true;
    Click(input);
    EXPECT_EQ(test.Stack(), "1* 2") << "the covered object";
    Click(At(30, 20));
    EXPECT_EQ(test.Stack(), "1 2");
    EXPECT_FALSE(test.doc.IsModified());
}

TEST_F(DefaultToolTest, DraggingMovesUnderOneNameAndEscapeGivesItUp)
{
    view.Press(At(7, 7));
    view.Move(At(9, 8));
    view.Move(At(12, 4));
    view.Release(At(12, 4));
    EXPECT_EQ((Point{upper->x, upper->y}), (Point{10, 2}));
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo move object(s)");
    EXPECT_EQ(test.doc.History().UndoList().size(), 1u);
    EXPECT_EQ(view.PointerText(), " x=12 y=4");
    test.doc.Undo();
    EXPECT_EQ((Point{upper->x, upper->y}), (Point{5, 5}));

    test.doc.SetModified(false);
    view.Press(At(7, 7));
    view.Move(At(20, 20));
    EXPECT_TRUE(view.CancelDrag());
    EXPECT_EQ((Point{upper->x, upper->y}), (Point{5, 5}));
    EXPECT_FALSE(test.doc.History().UndoItem().enabled);
    EXPECT_FALSE(test.doc.IsModified());

    view.Press(At(7, 7));
    view.Move(At(20, 20));
    NewObject(test.doc);
    EXPECT_TRUE(view.CancelDrag());
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo new object") << "what came meanwhile stays";
    EXPECT_EQ((Point{upper->x, upper->y}), (Point{18, 18}));
}

TEST_F(DefaultToolTest, LockedObjectsStayAndSaySoOnce)
{
    upper->locked = true;
    view.Press(At(7, 7));
    EXPECT_TRUE(test.ui.messages.empty()) << "a press alone says nothing";
    view.Move(At(9, 9));
    view.Move(At(12, 12));
    view.Release(At(12, 12));
    EXPECT_EQ(test.ui.messages.size(), 1u);
    EXPECT_EQ(upper->x, 5);
    EXPECT_FALSE(test.doc.History().UndoItem().enabled);
}

} // namespace
