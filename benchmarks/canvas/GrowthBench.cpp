// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PanelOperations.h"
#include "document/PlacementOperations.h"
#include "fileio/DocumentFiles.h"
#include "imageops/TransformTable.h"
#include "model/FillDib.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Workbench.h"

#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

// What actions cost as their work grows: in pixels of one object, and in objects of a few pixels.

namespace {

constexpr Size kWindow{1600, 1000};

struct GrowthScene {
    explicit GrowthScene(CPackedDib picture) : bench(std::move(picture)) {}

    void PaintWindow() { bench.View().Paint(ViewOf(screen), Rect::At({0, 0}, kWindow)); }
    void Save() { static_cast<void>(SaveDocument(bench.Document(), file)); }
    [[nodiscard]] CObjectList& Objects() { return bench.Document().Canvas().objects; }
    void Press(Point client) { bench.View().Press(CWorkbench::LeftAt(client)); }
    void Move(Point client) { bench.View().Move(CWorkbench::LeftAt(client)); }
    void Release(Point client) { bench.View().Release(CWorkbench::LeftAt(client)); }

    CWorkbench bench;
    CPackedDib screen = CPackedDib::Create(kWindow.width, kWindow.height, 32);
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "pixolune-bench-growth.pxd";
    int turn = 0;
};

/// A photo that repeats itself. 4:3, a little more than the megapixels.
CPackedDib TiledPhoto(int megapixels)
{
    const CPackedDib& photo = BackdropPicture(1);
    int height = 48;
    while (int64_t{height} * height / 3 * 4 < int64_t{megapixels} * 1'000'000)
        height += 48;
    CPackedDib picture = CPackedDib::CreateForOverwrite(height / 3 * 4, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < picture.Width(); x += photo.Width()) {
            std::memcpy(picture.Row(y) + ptrdiff_t{x} * 4, photo.Row(y % photo.Height()),
                        static_cast<size_t>(std::min(photo.Width(), picture.Width() - x)) * 4);
        }
    }
    return picture;
}

/// One object.
std::shared_ptr<GrowthScene> ManyPixels(int megapixels)
{
    return std::make_shared<GrowthScene>(TiledPhoto(megapixels));
}

/// Objects of 40 x 40 pixels all over a canvas of 12 megapixels.
std::shared_ptr<GrowthScene> ManyObjects(int count)
{
    auto scene = std::make_shared<GrowthScene>(CPackedDib::CreateTransparent(40, 40));
    CPixoluneDoc& document = scene->bench.Document();
    document.Canvas().width = 4000;
    document.Canvas().height = 3000;
    scene->bench.View().OnCanvasSizeChanged();
    for (int i = 1; i < count; ++i) {
        CPackedDib picture = CPackedDib::Create(40, 40, 32);
        FillDib(picture, static_cast<uint32_t>(i) * 7919 % 0xFFFFFF, static_cast<uint8_t>(80 + i % 176));
        auto object = MakeShared<CPicObject>(document.NewImage(std::move(picture)));
        object->visible = true;
        object->x = i * 1597 % 3960;
        object->y = i * 987 % 2960;
        scene->Objects().Append(std::move(object));
    }
    // The last of them stands in the middle of the window and is the one that is moved and painted.
    const Ref<CPicObject> last = scene->Objects().At(scene->Objects().Count() - 1);
    last->x = 800;
    last->y = 500;
    FillDib(last->image->MutableDib(), 0x2060A0, 255);
    CObjectList selected;
    selected.Append(last);
    SelectObjects(document, selected);
    return scene;
}

using Step = void (*)(GrowthScene& scene);
struct Action {
    const char* name;
    Step prepare;
    Step step;
};

void Nothing(GrowthScene& /*scene*/) {}

void ShowAll(GrowthScene& scene)
{
    scene.bench.View().SetZoom(-8);
}

void FirstPaint(GrowthScene& scene)
{
    scene.bench.View().ForgetPainting();
    scene.PaintWindow();
}

void Pan(GrowthScene& scene)
{
    scene.turn = (scene.turn + 1) % 20;
    scene.bench.View().SetScroll({100 + (scene.turn < 10 ? scene.turn : 20 - scene.turn) * 12, 100});
    scene.PaintWindow();
}

void MoveStep(GrowthScene& scene)
{
    scene.turn = (scene.turn + 1) % 20;
    scene.Move({820 + (scene.turn < 10 ? scene.turn : 20 - scene.turn) * 3, 520});
    scene.bench.PaintInvalidated();
}

void Stroke(GrowthScene& scene)
{
    scene.bench.View().SetMode(ToolMode::Pencil);
    scene.Press({805, 505});
    for (int i = 1; i <= 8; ++i)
        scene.Move({805 + i * 3, 505 + i * 3});
    scene.Release({829, 529});
    scene.bench.PaintInvalidated();
    scene.bench.Document().Undo();
}

void Select(GrowthScene& scene)
{
    scene.Press({5, 5});
    scene.Release({5, 5});
    scene.Press({820, 520});
    scene.Release({820, 520});
    scene.bench.PaintInvalidated();
}

void MoveAndUndo(GrowthScene& scene)
{
    NudgeObjects(scene.bench.Document(), 1, 0);
    scene.bench.Document().Undo();
    scene.bench.ForgetInvalidated();
}

void Open(GrowthScene& scene)
{
    CObjectCanvas canvas;
    static_cast<void>(LoadFile(canvas, scene.file, scene.bench.Document().Services()));
}

template <TransformKind kind, int value> void Operate(GrowthScene& scene)
{
    const int values[] = {value};
    const TransformRow& operation = FindTransform(kind);
    static_cast<void>(operation.run(scene.Objects().At(0)->image->Dib(),
                                    std::span(values).first(operation.parameters.size())));
}

void Flood(GrowthScene& scene)
{
    scene.bench.View().SetMode(ToolMode::FloodFill);
    scene.Press({800, 500});
    scene.Release({800, 500});
    scene.bench.Document().Undo();
    scene.bench.ForgetInvalidated();
}

void MergeAll(GrowthScene& scene)
{
    static_cast<void>(Flatten(scene.bench.Document().Canvas()));
}

constexpr Action kByPixels[] = {
    {"first-paint", Nothing, FirstPaint},
    {"first-paint-of-an-eighth", ShowAll, FirstPaint},
    {"pan-step", Nothing, Pan},
    {"stroke-and-undo", Nothing, Stroke},
    {"flood-and-undo", Nothing, Flood},
    {"negative", Nothing, Operate<TransformKind::Negative, 0>},
    {"box-blur", Nothing, Operate<TransformKind::Blur, 15>},
    {"save-native", Nothing, [](GrowthScene& scene) { scene.Save(); }},
    {"open-native", [](GrowthScene& scene) { scene.Save(); }, Open},
};
constexpr Action kByObjects[] = {
    {"first-paint", Nothing, FirstPaint},
    {"first-paint-of-an-eighth", ShowAll, FirstPaint},
    {"pan-step", Nothing, Pan},
    {"stroke-and-undo", Nothing, Stroke},
    {"move-step",
     [](GrowthScene& scene) {
         scene.Press({820, 520});
     },
     MoveStep},
    {"select", Nothing, Select},
    {"nudge-and-undo", Nothing, MoveAndUndo},
    {"merge", Nothing, MergeAll},
    {"save-native", Nothing, [](GrowthScene& scene) { scene.Save(); }},
    {"open-native", [](GrowthScene& scene) { scene.Save(); }, Open},
};

void Add(const Action& action, const std::string& size, std::shared_ptr<GrowthScene> (*make)(int), int amount)
{
    AddCase({std::string("growth/") + action.name, size, "ours", Threads::All}, [=] {
        const std::shared_ptr<GrowthScene> scene = make(amount);
        scene->bench.View().SetScroll({0, 0});
        action.prepare(*scene);
        return [scene, step = action.step] { step(*scene); };
    });
}

const bool kRegistered = [] {
    for (const int megapixels : {1, 4, 16, 64}) {
        for (const Action& action : kByPixels)
            Add(action, SizeName(megapixels), ManyPixels, megapixels);
    }
    for (const int count : {1, 10, 100, 1000, 10'000}) {
        for (const Action& action : kByObjects)
            Add(action, std::to_string(count) + "-objects", ManyObjects, count);
    }
    return true;
}();

} // namespace
