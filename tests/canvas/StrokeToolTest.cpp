// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/CanvasToolTest.h"
#include "document/ObjectOperations.h"

#include <cmath>

namespace {

/// Hard pens one pixel wide, unless a test sets them otherwise.
struct StrokeToolTest : CanvasToolTest {
    StrokeToolTest()
    {
        for (const Setting setting : {Setting::PaintLineWidth, Setting::EraseLineWidth})
            test.settings.Set(setting, 1);
        for (const Setting setting : {Setting::LineSmoothDegree, Setting::EraseSmoothDegree})
            test.settings.Set(setting, 0);
        test.settings.Set(Setting::PaintForeColor, 0x0000FF);
        test.settings.Set(Setting::PaintBackgndColor, 0x00FF00);
    }
    [[nodiscard]] uint32_t Pixel(int x, int y) const
    {
        const CPicObject& object = *test.doc.Canvas().objects.Top();
        return object.image->PixelAt(x - object.x, y - object.y);
    }
    [[nodiscard]] int Alpha(int x, int y) const { return static_cast<int>(Pixel(x, y) >> 24); }
    void ExpectUndoAndRedo(const CPackedDib& before)
    {
        const CPicObject& object = *test.doc.Canvas().objects.Top();
        const CPackedDib after = object.image->Dib().Duplicate();
        const Rect place = object.Rectangle();
        test.doc.Undo();
        EXPECT_TRUE(SameBytes(object.image->Dib(), before));
        test.doc.Redo();
        EXPECT_TRUE(SameBytes(object.image->Dib(), after));
        EXPECT_EQ(object.Rectangle(), place);
    }
};

TEST_F(StrokeToolTest, PencilGrowsTheObjectWhereItMayPaintTransparentAreas)
{
    const CPackedDib before = UniformDib(4, 4, 0xFF000000);
    test.Add(before.Duplicate(), 5, 5, true);
    view.SetMode(ToolMode::Pencil);
    Stroke({{6, 6}, {20, 6}});
    EXPECT_EQ(test.doc.Canvas().objects.Top()->Rectangle(), (Rect{5, 5, 21, 9}));
    EXPECT_EQ(Pixel(20, 6), 0xFFFF0000u);
    EXPECT_EQ(Pixel(20, 7), 0x00000000u);
    EXPECT_EQ(Pixel(5, 5), 0xFF000000u);
    EXPECT_EQ(UndoName(), "Undo paint line");
    ExpectUndoAndRedo(before);
    Stroke({{39, 29}, {60, 40}}, MouseButton::Right);
    EXPECT_EQ(test.doc.Canvas().objects.Top()->Rectangle(), (Rect{5, 5, 40, 30})) << "not beyond the canvas";
    EXPECT_EQ(Pixel(39, 29), 0xFF00FF00u);
}

TEST_F(StrokeToolTest, PencilCoverageAccumulatesAtJoints)
{
    test.Add(UniformDib(40, 30, 0x00000000), 0, 0, true);
    test.settings.Set(Setting::LineOpacity, 155);
    view.SetMode(ToolMode::Pencil);
    Stroke({{5, 5}, {10, 5}, {15, 5}});
    EXPECT_EQ(Alpha(7, 5), 100);
    EXPECT_EQ(Alpha(10, 5), 200);
    Stroke({{7, 5}});
    EXPECT_EQ(Alpha(7, 5), 255 - 155 * 155 / 255) << "a new stroke goes over the old one";
    view.Press(At({5, 9}));
    view.Move(At({10, 9}));
    view.Release(At({15, 9}));
    EXPECT_EQ(Alpha(10, 9), 100);
    EXPECT_EQ(Alpha(11, 9), 0) << "a release draws nothing more";
}

TEST_F(StrokeToolTest, PencilWithoutTransparentAreasKeepsAlpha)
{
    CPackedDib picture = UniformDib(40, 30, 0x80102030);
    picture.Row(5)[4 * 8 + 3] = 0;
    const CPackedDib before = picture.Duplicate();
    test.Add(std::move(picture), 0, 0, true);
    test.settings.Set(Setting::AllowPaintTransparence, 0);
    test.settings.Set(Setting::LineOpacity, 100);
    view.SetMode(ToolMode::Pencil);
    Stroke({{5, 5}, {12, 5}});
    // Coverage 155 over alpha 128: 206 together; red is (100 * 128 * 16 / 255 + 155 * 255) / 206.
    EXPECT_EQ(Pixel(6, 5), 0x80000000u | (100 * 128 * 0x10 / 255 + 155 * 255) / 206 << 16 |
                               100 * 128 * 0x20 / 255 / 206 << 8 | 100 * 128 * 0x30 / 255 / 206);
    EXPECT_EQ(Pixel(8, 5), 0x00102030u) << "what was transparent stays so";
    EXPECT_EQ(UndoName(), "Undo paint line");
    ExpectUndoAndRedo(before);
}

TEST_F(StrokeToolTest, EraserTakesAlphaOffAndLeavesColours)
{
    CPackedDib picture = UniformDib(20, 20, 0xC8102030);
    picture.Row(2)[4 * 3 + 3] = 60;
    const CPackedDib before = picture.Duplicate();
    test.Add(std::move(picture), 4, 4, true);
    test.settings.Set(Setting::EraseTransparence, 100);
    view.SetMode(ToolMode::Erase);
    Stroke({{5, 6}, {9, 6}, {30, 6}});
    EXPECT_EQ(Pixel(6, 6), 0x64102030u);
    EXPECT_EQ(Pixel(7, 6), 0x00102030u);
    EXPECT_EQ(Pixel(9, 6), 0x00102030u) << "erased again at the joint";
    EXPECT_EQ(Pixel(6, 7), 0xC8102030u);
    EXPECT_EQ(UndoName(), "Undo erase");
    ExpectUndoAndRedo(before);
}

TEST_F(StrokeToolTest, SoftEdgesFadeOverTheRadius)
{
    test.Add(UniformDib(40, 30, 0xFF000000), 0, 0, true);
    test.settings.Set(Setting::EraseLineWidth, 8);
    test.settings.Set(Setting::EraseSmoothDegree, 100);
    test.settings.Set(Setting::EraseBeeline, 1);
    view.SetMode(ToolMode::Erase);
    Stroke({{5, 15}, {20, 20}, {35, 15}});
    for (int from = 0; from < 9; ++from) {
        // An even pen runs along the upper edge of the row.
        const double coverage = std::max(0.0, 0.5 - (from + 0.5 - 4) / 8);
        EXPECT_NEAR(Alpha(20, 15 + from), 255 - 255 * coverage, 1) << from;
        EXPECT_EQ(Alpha(20, 15 + from), Alpha(20, 14 - from));
    }
    EXPECT_EQ(Steps(), 1u);
}

TEST_F(StrokeToolTest, SelectionConfinesStrokes)
{
    test.Add(UniformDib(40, 30, 0xFF000000), 0, 0, true);
    view.SetSelection(CRegion(Rect{10, 0, 20, 30}));
    for (const ToolMode mode : {ToolMode::Pencil, ToolMode::Erase}) {
        view.SetMode(mode);
        Stroke({{2, 5}, {5, 8}});
        EXPECT_EQ(Steps(), mode == ToolMode::Pencil ? 0u : 1u) << "wholly outside records nothing";
        Stroke({{2, 5}, {30, 5}});
        EXPECT_EQ(Pixel(9, 5), 0xFF000000u);
        EXPECT_EQ(Pixel(20, 5), 0xFF000000u);
    }
    EXPECT_EQ(Pixel(10, 5), 0x00FF0000u);
    EXPECT_EQ(Steps(), 2u);
}

TEST_F(StrokeToolTest, RefusalsNameTheTool)
{
    struct Row {
        ToolMode mode;
        const char* noObject;
        const char* noneSelected;
    };
    for (const Row& row : {Row{ToolMode::Pencil, "A  object must be present at least before drawing line!",
                               "A object must be selected at least before drawing line!"},
                           Row{ToolMode::Erase, "A  object must be present at least before erasing!",
                               "A object must be selected at least before erasing!"}}) {
        view.SetMode(row.mode);
        test.doc.Canvas().objects.Clear();
        Stroke({{5, 5}});
        test.Add(UniformDib(5, 5, 0xFF000000), 20, 20);
        Stroke({{5, 5}});
        test.doc.Canvas().objects.Top()->locked = true;
        Stroke({{22, 22}});
        EXPECT_EQ(test.ui.TakeMessages(),
                  (std::vector<std::string>{row.noObject, row.noneSelected, row.noneSelected}));
    }
    EXPECT_EQ(Steps(), 0u);
}

TEST_F(StrokeToolTest, TargetsAreTheSelectedThenTheHitThenAnySelectedObject)
{
    const Ref<CPicObject> lower = test.Add(UniformDib(20, 20, 0xFF000000), 0, 0);
    const Ref<CPicObject> upper = test.Add(UniformDib(20, 20, 0xFF000000), 0, 0);
    view.SetMode(ToolMode::Erase);
    Stroke({{3, 3}});
    EXPECT_EQ(upper->image->PixelAt(3, 3), 0u) << "the topmost that is hit";
    EXPECT_EQ(test.Stack(), "1 2*");
    upper->SetSelected(false);
    lower->SetSelected(true);
    Stroke({{5, 5}});
    EXPECT_EQ(lower->image->PixelAt(5, 5), 0u) << "the selected one below it";
    Stroke({{30, 25}, {10, 10}});
    EXPECT_EQ(lower->image->PixelAt(10, 10), 0u) << "the selected one, from outside";
    lower->locked = true;
    Stroke({{7, 7}});
    EXPECT_EQ(upper->image->PixelAt(7, 7), 0u) << "locked ones are passed over";
}

TEST_F(StrokeToolTest, GivingUpPutsEverythingBack)
{
    const CPackedDib before = RandomDib(40, 30, 9);
    test.Add(before.Duplicate(), 0, 0, true);
    for (const ToolMode mode : {ToolMode::Pencil, ToolMode::Erase}) {
        for (const int allowed : {0, 1}) {
            test.settings.Set(Setting::AllowPaintTransparence, allowed);
            view.SetMode(mode);
            view.Press(At({5, 5}));
            view.Move(At({20, 20}));
            EXPECT_TRUE(view.CancelDrag());
            EXPECT_TRUE(SameBytes(test.doc.Canvas().objects.Top()->image->Dib(), before));
        }
    }
    EXPECT_EQ(Steps(), 0u);
}

TEST_F(StrokeToolTest, WhatChangesDuringAStrokeIsLeftAlone)
{
    test.Add(UniformDib(40, 30, 0xFF000000), 0, 0, true);
    CRasterImage& image = *test.doc.Canvas().objects.Top()->image;
    const CPackedDib other = RandomDib(70, 60, 4);
    for (const ToolMode mode : {ToolMode::Pencil, ToolMode::Erase}) {
        for (const int allowed : {1, 0}) {
            test.settings.Set(Setting::AllowPaintTransparence, allowed);
            image.Attach(UniformDib(40, 30, 0xFF000000));
            ResizeCanvas(test.doc, {40, 30});
            view.SetMode(mode);
            view.Press(At({5, 5}));
            view.Move(At({20, 20}));
            ResizeCanvas(test.doc, {80, 80});
            image.Attach(other.Duplicate());
            view.Move(At({60, 50}));
            view.Release(At({60, 50}));
            EXPECT_EQ(SameBytes(image.Dib(), other), mode == ToolMode::Erase || allowed == 0);
            EXPECT_EQ(image.PixelAt(50, 42), CRasterImage(other.Duplicate(), "").PixelAt(50, 42));
        }
    }
}

TEST_F(StrokeToolTest, UnfinishedStrokesShowAsTheyWillBecome)
{
    test.Add(UniformDib(30, 20, 0xFF336699), 2, 2, true);
    test.settings.Set(Setting::PaintLineWidth, 6);
    view.SetMode(ToolMode::Pencil);
    CPackedDib during = CPackedDib::Create(44, 34, 32), after = CPackedDib::Create(44, 34, 32);
    for (const Point point : {Point{5, 5}, Point{20, 12}, Point{38, 3}})
        point == Point{5, 5} ? view.Press(At(point)) : view.Move(At(point));
    // Frames of selected objects would differ: the object grows at the end.
    test.doc.Canvas().objects.Top()->SetSelected(false);
    view.Paint(ViewOf(during), {0, 0, 44, 34});
    view.Release(At({38, 3}));
    view.Paint(ViewOf(after), {0, 0, 44, 34});
    EXPECT_TRUE(SameBytes(during, after));
}

/// Notes which rectangles of the frame changed.
struct ChangedFrame final : IDocumentObserver {
    void OnFrameChanged(const Rect& rect) override { rects.push_back(rect); }
    std::vector<Rect> rects;
};

TEST_F(StrokeToolTest, UndoAndRedoTellOfNoMoreThanWhatTheStrokeTouched)
{
    test.doc.Canvas().width = test.doc.Canvas().height = 1000;
    const Ref<CPicObject> object = test.Add(RandomDib(900, 700, 6), 33, 21, true);
    view.OnCanvasSizeChanged();
    for (const int allowed : {1, 0}) {
        test.settings.Set(Setting::AllowPaintTransparence, allowed);
        view.SetMode(ToolMode::Pencil);
        Stroke({{40, 30}, {880, 690}});
        for (const auto move : {&CPixoluneDoc::Undo, &CPixoluneDoc::Redo}) {
            const CPackedDib before = object->image->Dib().Duplicate();
            ChangedFrame told;
            test.doc.AddObserver(&told);
            EXPECT_TRUE((test.doc.*move)());
            test.doc.RemoveObserver(&told);
            int64_t area = 0;
            for (const Rect& rect : told.rects)
                area += int64_t{rect.Width()} * rect.Height();
            EXPECT_LT(area, 900 * 700 / 4);
            int missed = 0;
            for (int y = 0; y < 700; ++y) {
                for (int x = 0; x < 900; ++x) {
                    const Point place{33 + x, 21 + y};
                    const bool isTold = std::ranges::any_of(
                        told.rects, [place](const Rect& rect) { return rect.Contains(place); });
                    missed += PixelOf(before, x, y) != object->image->PixelAt(x, y) && !isTold;
                }
            }
            EXPECT_EQ(missed, 0);
        }
    }
}

TEST_F(StrokeToolTest, ShiftTurnsABeelineToMultiplesOf15Degrees)
{
    for (const auto& [mode, setting] : {std::pair(ToolMode::Pencil, Setting::PaintBeeline),
                                        std::pair(ToolMode::Erase, Setting::EraseBeeline)}) {
        SCOPED_TRACE(static_cast<int>(mode));
        test.doc.Canvas().objects.Clear();
        test.Add(UniformDib(40, 30, 0xFF102030), 0, 0, true);
        const auto isChanged = [&](int x, int y) { return Pixel(x, y) != 0xFF102030; };
        test.settings.Set(setting, 1);
        view.SetMode(mode);
        MouseInput shift;
        shift.shift = true;
        Stroke({{5, 5}, {30, 20}, {25, 7}}, MouseButton::Left, shift);
        EXPECT_TRUE(isChanged(25, 5)) << "the nearest direction is level";
        EXPECT_FALSE(isChanged(25, 7));
        Stroke({{5, 10}, {25, 29}}, MouseButton::Left, shift);
        EXPECT_TRUE(isChanged(20, 25)) << "the nearest direction is the diagonal";
        Stroke({{30, 10}, {INT32_MAX, 10}}, MouseButton::Left, shift);
        EXPECT_TRUE(isChanged(39, 10));
    }
}

TEST_F(StrokeToolTest, OutlineOfTheBrushRunsAlongTheEdgeOfOneDab)
{
    test.Add(UniformDib(40, 30, 0xFF808080), 0, 0, true);
    const auto pixelsOfOutline = [&](Point pointer) {
        view.Move(At(pointer));
        CPackedDib with = CPackedDib::Create(44, 34, 32);
        CPackedDib without = CPackedDib::Create(44, 34, 32);
        view.SetPointerInside(false);
        view.Paint(ViewOf(without), {0, 0, 44, 34});
        view.SetPointerInside(true);
        view.Paint(ViewOf(with), {0, 0, 44, 34});
        std::vector<Point> changed;
        for (int y = 0; y < 34; ++y) {
            for (int x = 0; x < 44; ++x) {
                if (PixelOf(with, x, y) != PixelOf(without, x, y))
                    changed.push_back({x - 2, y - 2});
            }
        }
        return changed;
    };
    const struct {
        const char* name;
        int width, roundCap;
    } cases[] = {{"even", 8, 1}, {"odd", 7, 1}, {"least", 4, 1}, {"square", 8, 0}, {"wide", 23, 1}};
    view.SetMode(ToolMode::Erase);
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        test.settings.Set(Setting::EraseLineWidth, row.width);
        test.settings.Set(Setting::EraseRoundCap, row.roundCap);
        const std::vector<Point> outline = pixelsOfOutline({19, 14});
        Stroke({{19, 14}});
        const auto isPainted = [&](int x, int y) { return Alpha(x, y) == 0; };
        std::vector<Point> edge;
        for (int y = 1; y < 29; ++y) {
            for (int x = 1; x < 39; ++x) {
                if (isPainted(x, y) && !(isPainted(x - 1, y) && isPainted(x + 1, y) && isPainted(x, y - 1) &&
                                         isPainted(x, y + 1)))
                    edge.push_back({x, y});
            }
        }
        EXPECT_EQ(outline, edge);
        test.doc.Undo(); // white dashes would not show on the white squares of the erased part
        test.settings.Set(Setting::EraseSmoothDegree, 100);
        EXPECT_EQ(pixelsOfOutline({19, 14}), outline) << "a soft brush is as wide";
        test.settings.Set(Setting::EraseSmoothDegree, 0);
    }
    EXPECT_FALSE(pixelsOfOutline({-3, 14}).empty()) << "a dab beside the canvas still reaches it";
    EXPECT_TRUE(pixelsOfOutline({-30, 14}).empty()) << "outside";
    test.settings.Set(Setting::EraseLineWidth, 3);
    EXPECT_TRUE(pixelsOfOutline({19, 14}).empty()) << "too small to be seen";
    view.SetZoom(2);
    EXPECT_FALSE(pixelsOfOutline({19, 14}).empty());
}

} // namespace
