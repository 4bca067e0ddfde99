// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PanelOperations.h"
#include "fileio/DocumentFiles.h"
#include "imageops/ui/TransformDlg.h"
#include "platform/ui/QtText.h"
#include "window/Stage.h"

#include <QApplication>
#include <QSlider>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

// What a user waits for: events go to the real window, and a case ends when the canvas has been painted.

namespace {

using Step = std::function<void(CBenchWindow& window)>;

/// The step of a drag, there and back again by turns.
Step DragSteps(CBenchWindow& window, QPoint from, Qt::MouseButton button, QPoint step)
{
    window.Press(from, button);
    return [from, button, step, turn = 0](CBenchWindow& w) mutable {
        turn = (turn + 1) % 20;
        w.Drag(from + step * (turn < 10 ? turn : 20 - turn), button);
    };
}

QPoint Middle(CBenchWindow& window)
{
    return window.Canvas().rect().center();
}

/// Selects an object and drags it by a pixel that is not clear.
Step MoveObject(CBenchWindow& window, size_t index)
{
    const Ref<CPicObject> object = window.Document().Canvas().objects.At(index);
    CObjectList moved;
    moved.Append(object);
    SelectObjects(window.Document(), moved);
    QPoint grip = Middle(window);
    while (grip.x() > 0 && !object->IsHit(window.View().Geometry().ToDocument(Point{grip.x(), grip.y()})))
        grip.rx() -= 10;
    return DragSteps(window, grip, Qt::LeftButton, {5, 3});
}

/// From the end of a slider's drag until the canvas shows the result.
Step PreviewSteps(CBenchWindow& window)
{
    const auto dialog = std::make_shared<CTransformDlg>(
        window.Document(), FindTransform(TransformKind::BrightnessContrast), &window.Frame());
    dialog->show();
    CBenchWindow::Settle();
    auto* slider = dialog->findChild<QSlider*>();
    return [dialog, slider](CBenchWindow& w) {
        slider->setSliderDown(true);
        slider->setValue(slider->value() == 20 ? 30 : 20);
        slider->setSliderDown(false);
        w.AwaitPaint();
    };
}

struct WindowCase {
    const char* operation;
    int times;
    std::function<Step(CBenchWindow& window)> prepare; ///< with the document shown
    bool isGesture = false; ///< the steps follow one another, and only after the last one the window rests
};

/// A step that nothing has to be prepared for.
std::function<Step(CBenchWindow&)> Plainly(Step step)
{
    return [step = std::move(step)](CBenchWindow&) { return step; };
}

/// By turns one command and the other.
Step Alternately(CommandId one, CommandId other)
{
    return [=, isOther = true](CBenchWindow& window) mutable {
        isOther = !isOther;
        window.Run(isOther ? other : one);
    };
}

const WindowCase kCases[] = {
    {"first-paint", 10, Plainly([](CBenchWindow& window) {
         window.View().ForgetPainting();
         window.Canvas().repaint();
     })},
    {"paint-all", 20, Plainly([](CBenchWindow& window) { window.Canvas().repaint(); })},
    {"pan-step", 40,
     [](CBenchWindow& w) {
         return DragSteps(w, Middle(w), Qt::MiddleButton, {12, 7});
     },
     true},
    {"zoom-in-step", 20, Plainly(Alternately(CommandId::ViewZoomIn, CommandId::ViewZoomOut))},
    {"zoom-out-step", 20, Plainly(Alternately(CommandId::ViewZoomOut, CommandId::ViewZoomIn))},
    {"stroke-step", 40,
     [](CBenchWindow& window) {
         window.View().SetMode(ToolMode::Pencil);
         return DragSteps(window, Middle(window), Qt::LeftButton, {9, 4});
     },
     true},
    {"undo-redo-stroke", 10,
     [](CBenchWindow& window) {
         Stroke(window, {300, 300});
         return Alternately(CommandId::EditUndo, CommandId::EditRedo);
     }},
    {"preview-brightness", 10, PreviewSteps},
    {"negative", 10, Plainly(Alternately(CommandId::TransformNegative, CommandId::EditUndo))},
};

const WindowCase kMoveTop{
    "move-top-step", 40,
    [](CBenchWindow& window) { return MoveObject(window, window.Document().Canvas().objects.Count() - 1); },
    true};
const WindowCase kMoveMiddle{
    "move-middle-step", 40, [](CBenchWindow& window) { return MoveObject(window, kStackObjects / 2); }, true};
const WindowCase kMoveBottom{"move-bottom-step", 40,
                             [](CBenchWindow& window) { return MoveObject(window, 0); }, true};

/// Times the steps until each is shown and, as counters, the longest of them and the time until the frame is
/// exact if nothing else happens.
void Time(benchmark::State& state, CBenchWindow& window, const WindowCase& windowCase)
{
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const Step step = windowCase.prepare(window);
    step(window); // pages and caches as they are in use
    window.AwaitExact();
    Milliseconds untilExact{};
    Milliseconds worst{};
    int rests = 0;
    int left = windowCase.times;
    for ([[maybe_unused]] auto iteration : state) {
        const Clock::time_point begin = Clock::now();
        step(window);
        state.PauseTiming();
        worst = std::max<Milliseconds>(worst, Clock::now() - begin);
        if (--left > 0 && windowCase.isGesture) {
            CBenchWindow::Settle(); // what the program does between two events
        } else {
            window.AwaitExact();
            untilExact += Clock::now() - begin;
            ++rests;
        }
        state.ResumeTiming();
    }
    state.counters["ExactMs"] = untilExact.count() / rests;
    state.counters["WorstMs"] = worst.count();
}

void AddCase(CStage& stage, const WindowCase& windowCase, const std::string& size,
             const std::function<void()>& show)
{
    AddWindowCase(std::string("window/") + windowCase.operation, size, windowCase.times,
                  [&stage, &windowCase, show](benchmark::State& state) {
                      show();
                      stage.window.Reset();
                      stage.window.AwaitExact();
                      Time(state, stage.window, windowCase);
                      stage.window.Reset();
                  });
}

void Register(CStage& stage)
{
    AddWindowCase("window/open-jpg", kPhotoName, 5, [&stage](benchmark::State& state) {
        stage.OpenPhoto(); // the size of the canvas, and what the program loads for the first picture
        for ([[maybe_unused]] auto iteration : state) {
            state.PauseTiming();
            stage.CloseAll();
            state.ResumeTiming();
            stage.window.Open(stage.PhotoPath());
        }
    });
    for (const WindowCase& windowCase : kCases)
        AddCase(stage, windowCase, kPhotoName, [&stage] { stage.ShowPhoto(); });
    AddCase(stage, kMoveTop, kPhotoName, [&stage] { stage.ShowPhoto(); });
    AddWindowCase("window/save-native", kPhotoName, 3, [&stage](benchmark::State& state) {
        stage.ShowPhoto();
        for ([[maybe_unused]] auto iteration : state)
            static_cast<void>(SaveDocument(stage.window.Document(), ToPath(stage.window.File("saved.pxd"))));
    });
    for (const Stack stack : kStacks) {
        for (const WindowCase& windowCase : kCases)
            AddCase(stage, windowCase, StackName(stack), [&stage, stack] { stage.ShowStack(stack); });
        for (const WindowCase* windowCase : {&kMoveTop, &kMoveMiddle, &kMoveBottom})
            AddCase(stage, *windowCase, StackName(stack), [&stage, stack] { stage.ShowStack(stack); });
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    CStage stage;
    Register(stage);
    AddMemoryCases(stage);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
