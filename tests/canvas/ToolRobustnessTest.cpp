// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/CanvasToolTest.h"
#include "canvas/ClipboardCommands.h"
#include "canvas/TextSession.h"
#include "document/ObjectOperations.h"
#include "document/PlacementOperations.h"
#include "platform/memory/HeapBlock.h"

#include <cstring>
#include <functional>

namespace {

/// What a document shows.
struct Snapshot {
    explicit Snapshot(const CPixoluneView& view) : selection(view.Selection())
    {
        for (const Ref<CPicObject>& object : view.Document().Canvas().objects)
            objects.push_back({object->image->Dib().Duplicate(), {object->x, object->y}});
    }
    struct Object {
        CPackedDib picture;
        Point place;
    };
    std::vector<Object> objects;
    CRegion selection;
};

void ExpectSame(const Snapshot& a, const Snapshot& b)
{
    EXPECT_EQ(a.selection, b.selection);
    ASSERT_EQ(a.objects.size(), b.objects.size());
    for (size_t i = 0; i < a.objects.size(); ++i) {
        EXPECT_EQ(a.objects[i].place, b.objects[i].place);
        EXPECT_TRUE(SameBytes(a.objects[i].picture, b.objects[i].picture));
    }
}

/// Two objects that overlap, with transparent pixels between coloured ones.
struct ToolRobustnessTest : CanvasToolTest {
    ToolRobustnessTest()
    {
        test.Add(UniformDib(20, 20, 0xFF102030), 2, 2, true);
        CPackedDib ring = UniformDib(12, 12, 0xFF405060);
        for (int y = 3; y < 9; ++y)
            std::memset(ring.Row(y) + 12, 0, 24);
        test.Add(std::move(ring), 15, 10);
        for (const Ref<CPicObject>& object : test.doc.Canvas().objects)
            object->SetSelected(true);
    }
    void UndoAll()
    {
        while (test.doc.Undo()) {
        }
    }
};

TEST(ToolsWithoutMemory, LeaveTheDocumentAsItWasAndSaySo)
{
    enum class Tells { OutOfMemory, Nothing };
    using Fixture = CanvasToolTest;
    struct Row {
        const char* name;
        ToolMode mode;
        std::function<void(Fixture&)> set;
        std::function<void(Fixture&)> act;
        Tells tells;
    };
    const auto set = [](std::initializer_list<std::pair<Setting, int>> values) {
        return [values = std::vector(values)](Fixture& f) {
            for (const auto& [setting, value] : values)
                f.test.settings.Set(setting, value);
        };
    };
    const auto stroke = [](Fixture& f) { f.Stroke({{4, 4}, {12, 9}, {20, 6}}); };
    const auto clickColour = [](Fixture& f) { f.Stroke({{4, 4}}); };
    const auto clickTransparency = [](Fixture& f) { f.Stroke({{20, 15}}); };
    const auto polygon = [](Fixture& f) {
        for (const Point point : {Point{4, 4}, Point{20, 5}, Point{12, 20}, Point{4, 4}})
            f.Stroke({point});
    };
    const auto text = [](Fixture& f) {
        TextStyle style = TextStyleFromSettings(f.test.settings);
        style.text.assign(1, 'W');
        CTextSession(f.view, {3, 3}).Ok(style);
    };
    const auto rewriting = [](Fixture& f) {
        const Ref<CPicObject> object = f.test.doc.Canvas().objects.Top();
        TextStyle style = *object->image->Dib().WrittenText();
        style.text.assign(2, 'W');
        CTextSession(f.view, object).Ok(style);
    };
    const auto addText = [&](Fixture& f) { text(f); };
    const auto select = [](Fixture& f) { f.view.SetSelection(CRegion(Rect{3, 3, 30, 12})); };
    using enum Setting;
    const auto none = set({});
    const Row kRows[] = {
        {"pencil", ToolMode::Pencil, set({{AllowPaintTransparence, 1}}), stroke, Tells::OutOfMemory},
        {"pencil in place", ToolMode::Pencil, set({{AllowPaintTransparence, 0}}), stroke, Tells::OutOfMemory},
        {"hard pencil", ToolMode::Pencil, set({{LineSmoothDegree, 0}}), stroke, Tells::OutOfMemory},
        {"straight pencil", ToolMode::Pencil, set({{PaintBeeline, 1}}), stroke, Tells::OutOfMemory},
        {"eraser", ToolMode::Erase, none, stroke, Tells::OutOfMemory},
        {"straight eraser", ToolMode::Erase, set({{EraseBeeline, 1}}), stroke, Tells::OutOfMemory},
        {"connected fill", ToolMode::FloodFill, none, clickColour, Tells::OutOfMemory},
        {"fill everywhere", ToolMode::FloodFill, set({{FloodAdjacentArea, 0}}), clickColour,
         Tells::OutOfMemory},
        {"connected transparency", ToolMode::FloodFill, none, clickTransparency, Tells::OutOfMemory},
        {"transparency everywhere", ToolMode::FloodFill, set({{FloodAdjacentArea, 0}}), clickTransparency,
         Tells::OutOfMemory},
        {"magic wand", ToolMode::MagicWandSelection, none, clickColour, Tells::Nothing},
        {"magic wand everywhere", ToolMode::MagicWandSelection, set({{ConnectedPixelsMagicWand, 0}}),
         clickColour, Tells::Nothing},
        {"elliptical selection", ToolMode::EllipticalSelection, none, stroke, Tells::Nothing},
        {"lasso", ToolMode::LassoSelection, none, stroke, Tells::Nothing},
        {"rectangle", ToolMode::Rectangle, none, stroke, Tells::OutOfMemory},
        {"ellipse", ToolMode::Ellipse, set({{FillShapeMode, 3}}), stroke, Tells::OutOfMemory},
        {"polygon", ToolMode::Polygon, none, polygon, Tells::OutOfMemory},
        {"text", ToolMode::Text, none, text, Tells::OutOfMemory},
        {"text of an object", ToolMode::Default, addText, rewriting, Tells::OutOfMemory},
        {"clearing", ToolMode::Default, select, [](Fixture& f) { Delete(f.view); }, Tells::OutOfMemory},
        {"cutting", ToolMode::Default, select, [](Fixture& f) { Cut(f.view); }, Tells::OutOfMemory},
    };
    struct Made final : ToolRobustnessTest {
        void TestBody() override {}
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        bool isDone = false;
        for (int64_t after = 0; !isDone; ++after) {
            SCOPED_TRACE(after);
            ASSERT_LT(after, 40) << "so much memory is not needed";
            Made made;
            row.set(made);
            made.view.SetMode(row.mode);
            const Snapshot before(made.view);
            const size_t steps = made.Steps();
            {
                const CAllocationFailure failure(after);
                row.act(made);
            }
            isDone = made.Steps() != steps;
            const bool tells = !isDone && row.tells == Tells::OutOfMemory;
            EXPECT_EQ(made.test.ui.TakeMessages(),
                      tells ? std::vector<std::string>{"Out of Memory!"} : std::vector<std::string>());
            if (isDone)
                EXPECT_GT(after, 0) << "nothing was asked for";
            else
                ExpectSame(Snapshot(made.view), before);
        }
    }
}

TEST(ToolsInOddSituations, NeverDoWhatCannotBeUndone)
{
    using Act = std::function<void(CanvasToolTest&)>;
    struct Row {
        const char* name;
        Act before;
        Act during;
        std::initializer_list<Point> points;
    };
    const Act nothing = [](CanvasToolTest&) {};
    const auto each = [](auto member) {
        return [member](CanvasToolTest& t) {
            for (const Ref<CPicObject>& object : t.test.doc.Canvas().objects)
                (*object).*member = !((*object).*member);
        };
    };
    const Row kRows[] = {
        {"far outside", nothing, nothing, {{-100'000, -100'000}, {INT32_MAX, INT32_MIN}, {INT32_MAX, 5}}},
        {"from far to near", nothing, nothing, {{INT32_MIN, 7}, {10, 10}}},
        {"no way at all", nothing, nothing, {{5, 5}, {5, 5}}},
        {"a line", nothing, nothing, {{5, 5}, {25, 5}}},
        {"removed meanwhile",
         nothing,
         [](CanvasToolTest& t) { DeleteObjects(t.test.doc); },
         {{5, 5}, {9, 9}}},
        {"undone meanwhile",
         [](CanvasToolTest& t) { NudgeObjects(t.test.doc, 1, 1); },
         [](CanvasToolTest& t) { t.test.doc.Undo(); },
         {{5, 5}, {9, 9}, {12, 7}}},
        {"hidden", each(&CPicObject::visible), nothing, {{5, 5}, {9, 9}}},
        {"locked", each(&CPicObject::locked), nothing, {{5, 5}, {9, 9}}},
    };
    struct Made final : ToolRobustnessTest {
        void TestBody() override {}
        using ToolRobustnessTest::UndoAll;
    };
    for (const Row& row : kRows) {
        for (int mode = 0; mode < kToolModeCount; ++mode) {
            SCOPED_TRACE(testing::Message() << row.name << ", tool " << mode);
            Made made;
            const Snapshot original(made.view);
            row.before(made);
            made.view.SetMode(static_cast<ToolMode>(mode));
            MouseInput input;
            input.button = MouseButton::Left;
            for (size_t i = 0; i < row.points.size(); ++i) {
                input.client = made.At(row.points.begin()[i]).client;
                i == 0 ? made.view.Press(input) : made.view.Move(input);
                if (i == 1 || row.points.size() == 1)
                    row.during(made);
            }
            made.view.Release(input);
            made.view.Key(ToolKey::Enter);
            CPackedDib shown = CPackedDib::Create(44, 34, 32);
            made.view.Paint(ViewOf(shown), {0, 0, 44, 34});
            made.UndoAll();
            ExpectSame(Snapshot(made.view), original);
        }
    }
}

} // namespace
