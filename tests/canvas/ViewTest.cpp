// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PixoluneView.h"
#include "document/ObjectOperations.h"
#include "support/TestDocument.h"

#include <utility>

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
            CPackedDib part = RandomDib(area.Width(), area.Height(), 5);
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

/// Keeps what a window would show, painting only what it is asked to.
struct Screen final : IViewHost {
    void Invalidate(const Rect& client) override { invalid.push_back(client); }
    void OnLayoutChanged() override { invalid = {{0, 0, 61, 47}}; }
    void Repaint(const CPixoluneView& view)
    {
        for (const Rect& rect : std::exchange(invalid, {}))
            view.Paint(ViewOf(pixels).Part(rect), rect);
    }
    std::vector<Rect> invalid;
    CPackedDib pixels = CPackedDib::Create(61, 47, 32);
};

TEST(View, PaintingWhatIsInvalidatedShowsEverythingThatChanged)
{
    for (int mode = 0; mode < kToolModeCount; ++mode) {
        for (const int zoom : {-2, 1, 3}) {
            for (const int option : {0, 1}) {
                SCOPED_TRACE(testing::Message()
                             << "tool " << mode << " zoom " << zoom << " option " << option);
                TestDocument test;
                test.Add(RandomDib(25, 19, 3), -4, 3, true);
                test.Add(RandomDib(30, 40, 4), 12, -7);
                for (const Setting setting : {Setting::FillInsideShape, Setting::PaintBeeline,
                                              Setting::EraseBeeline, Setting::AllowPaintTransparence})
                    test.settings.Set(setting, option);
                test.settings.Set(Setting::PaintShapeWidth, 5);
                Screen screen;
                CPixoluneView view(test.doc, &screen);
                view.SetClientSize({61, 47});
                view.SetZoom(zoom);
                view.SetMode(static_cast<ToolMode>(mode));
                const auto expectAll = [&](const char* after) {
                    SCOPED_TRACE(after);
                    screen.Repaint(view);
                    CPackedDib whole = CPackedDib::Create(61, 47, 32);
                    view.Paint(ViewOf(whole), {0, 0, 61, 47});
                    ASSERT_TRUE(SameBytes(screen.pixels, whole));
                };
                MouseInput input{{18, 15}, MouseButton::Left};
                view.SetPointerInside(true);
                view.Move({{10, 12}});
                expectAll("the pointer came");
                view.Press(input);
                expectAll("press");
                for (const Point point : {Point{40, 31}, Point{25, 36}, Point{9, 20}, Point{30, 5}}) {
                    input.client = point;
                    view.Move(input);
                    expectAll("move");
                }
                view.Release(input);
                expectAll("release");
                view.Key(ToolKey::Enter);
                view.Move({{50, 40}});
                expectAll("the end");
                view.SetPointerInside(false);
                expectAll("the pointer left");
            }
        }
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
