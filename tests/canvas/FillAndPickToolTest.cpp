// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/CanvasToolTest.h"
#include "canvas/ShownPixel.h"

namespace {

struct FillToolTest : CanvasToolTest {
    FillToolTest()
    {
        test.settings.Set(Setting::PaintForeColor, 0x0000FF);
        test.settings.Set(Setting::PaintBackgndColor, 0x00FF00);
        view.SetMode(ToolMode::FloodFill);
    }
    [[nodiscard]] const CPicObject& Top() const { return *test.doc.Canvas().objects.Top(); }
    [[nodiscard]] uint32_t Pixel(int x, int y) const
    {
        return Top().image->PixelAt(x - Top().x, y - Top().y);
    }
};

TEST_F(FillToolTest, FillsColourInsideTheObjectAndTheSelection)
{
    test.Add(UniformDib(10, 10, 0xFF102030), 5, 5, true);
    view.SetSelection(CRegion(Rect{5, 5, 10, 8}));
    Stroke({{6, 6}}, MouseButton::Right);
    EXPECT_EQ(Pixel(9, 7), 0xFF00FF00u);
    EXPECT_EQ(Pixel(10, 7), 0xFF102030u);
    EXPECT_EQ(Pixel(9, 8), 0xFF102030u);
    EXPECT_EQ(UndoName(), "Undo flood");
    test.doc.Undo();
    EXPECT_EQ(Pixel(9, 7), 0xFF102030u);
    view.SetSelection(CRegion());
    test.settings.Set(Setting::FloodOpacity, 255);
    Stroke({{6, 6}});
    EXPECT_EQ(Pixel(6, 6), 0xFF102030u) << "nothing to be seen";
    EXPECT_EQ(Steps(), 1u) << "but recorded";
}

TEST_F(FillToolTest, GrowsTheObjectWhenTransparencyIsFilled)
{
    struct Row {
        const char* name;
        Rect selection;
        bool connected;
        Rect grown;
        Point filled;
    };
    const Row kRows[] = {
        {"whole canvas", {}, true, {0, 0, 40, 30}, {39, 29}},
        {"in a selection", {12, 3, 20, 9}, true, {5, 3, 20, 15}, {19, 3}},
        {"to the right only", {12, 6, 20, 9}, true, {5, 5, 20, 15}, {19, 8}},
        {"everywhere, the hole too", {}, false, {0, 0, 40, 30}, {8, 8}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        test.doc.Canvas().objects.Clear();
        CPackedDib ring = UniformDib(10, 10, 0xFF102030);
        ring.Row(3)[4 * 3 + 3] = 0;
        const CPackedDib before = ring.Duplicate();
        test.Add(std::move(ring), 5, 5, true);
        view.SetSelection(CRegion(row.selection));
        test.settings.Set(Setting::FloodAdjacentArea, row.connected);
        Stroke({{16, 7}});
        EXPECT_EQ(Top().Rectangle(), row.grown);
        EXPECT_EQ(Pixel(row.filled.x, row.filled.y), 0xFFFF0000u);
        EXPECT_EQ(Pixel(5, 5), 0xFF102030u);
        EXPECT_EQ(Pixel(8, 8) >> 24, row.connected ? 0u : 255u) << "the hole";
        EXPECT_EQ(UndoName(), "Undo flood");
        test.doc.Undo();
        EXPECT_TRUE(SameBytes(Top().image->Dib(), before));
        EXPECT_EQ(Top().Rectangle(), (Rect{5, 5, 15, 15}));
    }
}

TEST_F(FillToolTest, RefusesInTheOrderOfItsChecks)
{
    Stroke({{45, 3}});
    Stroke({{3, 3}});
    test.Add(UniformDib(5, 5, 0xFF102030), 20, 20);
    view.SetSelection(CRegion(Rect{0, 0, 9, 9}));
    Stroke({{22, 22}});
    Stroke({{3, 3}});
    test.doc.Canvas().objects.Top()->SetSelected(true);
    test.settings.Set(Setting::FloodTransparence, 0);
    Stroke({{3, 3}});
    EXPECT_EQ(test.ui.TakeMessages(),
              (std::vector<std::string>{
                  "A  object must be present at least before flooding!",
                  "If you have made a selection area,plese click on it!",
                  "A object must be selected at least before flooding!",
                  "If you want to fill the transparent area,please check \"Allow painting on transparent "
                  "areas\" option."}));
    EXPECT_EQ(Steps(), 0u);
}

/// Remembers what the pick-colour tool reports.
struct PickHost final : IViewHost {
    void OnColourUnderPointer(uint32_t pixel) override { shown.push_back(pixel); }
    void OnPaintColoursChanged() override { ++picks; }
    std::vector<uint32_t> shown;
    int picks = 0;
};

TEST_F(CanvasToolTest, PickColourReadsWhatTheVisibleObjectsShow)
{
    test.Add(UniformDib(10, 10, 0xFF204060), 0, 0);
    test.Add(UniformDib(10, 10, 0xC8FF8000), 5, 0)->transparency = 100;
    test.Add(UniformDib(40, 30, 0xFFFFFFFF), 0, 0)->visible = false;
    PickHost host;
    view.SetHost(&host);
    view.SetMode(ToolMode::PickColor);
    // Alpha 100 over opaque: each channel is (155 * 255 * c / 255 + 100 * F) / 255.
    const uint32_t mixed = 0xFF000000u | (155 * 0x20 + 100 * 0xFF) / 255 << 16 |
                           (155 * 0x40 + 100 * 0x80) / 255 << 8 | 155 * 0x60 / 255;
    for (const Point point :
         {Point{2, 2}, Point{7, 2}, Point{12, 2}, Point{30, 20}, Point{-1, 2}, Point{40, 2}})
        view.Move(At(point));
    EXPECT_EQ(host.shown, (std::vector<uint32_t>{0xFF204060, mixed, 0x64FF8000, 0}));
    test.settings.Set(Setting::PaintForeColor, 1);
    test.settings.Set(Setting::PaintBackgndColor, 2);
    Stroke({{2, 2}});
    EXPECT_EQ(test.settings.Get(Setting::PaintForeColor), 0x604020);
    Stroke({{12, 2}}, MouseButton::Right);
    EXPECT_EQ(test.settings.Get(Setting::PaintBackgndColor), 0x0080FF);
    Stroke({{30, 20}});
    Stroke({{-1, 2}});
    EXPECT_EQ(test.settings.Get(Setting::PaintForeColor), 0x604020) << "nothing is shown there";
    EXPECT_EQ(host.picks, 2);
}

} // namespace
