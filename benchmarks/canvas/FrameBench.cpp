// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ProgressiveFrame.h"
#include "canvas/ViewGeometry.h"
#include "canvas/ViewPainting.h"
#include "support/Cases.h"
#include "support/ObjectStacks.h"

#include <functional>
#include <memory>

namespace {

constexpr Size kView{1920, 1080};

/// A document of fifty objects and a window on its middle.
struct Scene {
    CObjectCanvas canvas = MakeStack(Stack::Photos);
    CProgressiveFrame frames;
    CPackedDib screen = CPackedDib::Create(kView.width, kView.height, 32);
    Point scroll{900, 700};
    int zoom = 1;
    int frame = 0;

    void Paint()
    {
        const FrameScene scene{&canvas,
                               {},
                               DisplayLayers(canvas),
                               ViewGeometry{canvas.Size(), zoom, {}, {}}.ScaledSize(),
                               Rect::At(scroll, kView),
                               zoom};
        frames.Begin(scene, scene.window, FrameRule::Exact);
        frames.Paint(ViewOf(screen), scroll, scene);
    }
};

const std::shared_ptr<Scene>& TheScene()
{
    static const auto kScene = std::make_shared<Scene>();
    return kScene;
}

/// What a frame of some gesture does before it is painted.
struct Gesture {
    const char* name;
    void (*step)(Scene& scene);
};

void MoveObject(Scene& scene, size_t index)
{
    scene.canvas.objects.At(index)->x += scene.frame % 40 < 20 ? 3 : -3;
    scene.frames.Drop(Rect::At(scene.scroll, kView));
}

constexpr Gesture kGestures[] = {
    {"pan", [](Scene& scene) { scene.scroll.x += scene.frame % 40 < 20 ? 16 : -16; }},
    {"move-top", [](Scene& scene) { MoveObject(scene, kStackObjects - 1); }},
    {"move-middle", [](Scene& scene) { MoveObject(scene, kStackObjects / 2); }},
    {"move-bottom", [](Scene& scene) { MoveObject(scene, 0); }},
    {"stroke",
     [](Scene& scene) {
         (void)scene.canvas.objects.At(kStackObjects / 2)->image->MutableDib();
         scene.frames.Drop(Rect::At({1500 + scene.frame % 40 * 5, 1000}, {40, 40}));
     }},
    {"zoom", [](Scene& scene) { scene.zoom = scene.frame % 2 == 0 ? 1 : -2; }},
};

void AddGesture(const Gesture& gesture)
{
    const std::string operation = std::string("frame/") + gesture.name;
    for (const Threads threads : kBothThreads) {
        const auto add = [&](const char* who, const std::function<void(Scene&)>& paint) {
            AddCase({operation, StackName(Stack::Photos), who, threads, 0}, [&gesture, paint] {
                const std::shared_ptr<Scene>& scene = TheScene();
                scene->zoom = 1;
                scene->frames.DropAll();
                for (int warmUp = 0; warmUp < 3; ++warmUp) {
                    gesture.step(*scene);
                    scene->Paint();
                }
                return [scene, &gesture, paint] {
                    ++scene->frame;
                    gesture.step(*scene);
                    paint(*scene);
                };
            });
        };
        add("ours", [](Scene& scene) { scene.Paint(); });
        add("all-anew", [](Scene& scene) {
            PaintBackdrop(ViewOf(scene.screen), scene.scroll);
            CompositeForDisplay(ViewOf(scene.screen), scene.scroll, scene.canvas, scene.zoom);
        });
    }
}

const bool kRegistered = [] {
    for (const Gesture& gesture : kGestures)
        AddGesture(gesture);
    return true;
}();

} // namespace
