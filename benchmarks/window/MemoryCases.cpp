// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/HeapBlock.h"
#include "support/Inputs.h"
#include "window/Stage.h"

#include <malloc.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

constexpr int kStrokes = 100;

/// A number of this process's status, in MiB.
double StatusMebibytes(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name))
            return std::strtod(line.c_str() + name.size(), nullptr) / 1024;
    }
    return 0;
}

/// Without what the program keeps for the next picture.
double ResidentMebibytes()
{
    DropSpareBlock();
    ::malloc_trim(0);
    return StatusMebibytes("VmRSS:");
}

void ForgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

double PixelMebibytes(int objects)
{
    return PixelsOf(12) * 4 * objects / (1 << 20);
}

void Report(benchmark::State& state, double pixels, double taken)
{
    state.counters["PixelMiB"] = pixels;
    state.counters["TakenMiB"] = taken;
}

/// The most that is taken at any time while a JPG is opened.
void OpenJpg(benchmark::State& state, CStage& stage)
{
    stage.OpenPhoto(); // the file, and what the program loads for the first picture
    for ([[maybe_unused]] auto iteration : state) {
        stage.CloseAll();
        const double before = ResidentMebibytes();
        ForgetPeak();
        stage.OpenPhoto();
        Report(state, PixelMebibytes(1), StatusMebibytes("VmHWM:") - before);
    }
}

/// Everything that a session does again and again; the history grows by the moves and the strokes.
void Work(CBenchWindow& window)
{
    window.Reset();
    for (int round = 0; round < 10; ++round) {
        window.View().SetScroll({100 * round, 60 * round});
        CBenchWindow::Settle();
        Stroke(window, {200 + 40 * round, 300});
        window.Run(CommandId::ViewZoomOut);
        window.Run(CommandId::ViewZoomIn);
        window.View().SetMode(ToolMode::Default);
        window.Press({900, 500}, Qt::LeftButton);
        for (int step = 1; step < 10; ++step)
            window.Drag({900 + step * 3, 500 + step}, Qt::LeftButton);
        window.Release({930, 510}, Qt::LeftButton);
    }
    window.Reset();
}

/// A document of fifty objects after some work, with its window and its history.
void Session(benchmark::State& state, CStage& stage)
{
    stage.ShowStack(Stack::Photos); // the pictures that the objects are made from
    for ([[maybe_unused]] auto iteration : state) {
        stage.CloseAll();
        const double before = ResidentMebibytes();
        stage.ShowStack(Stack::Photos);
        Work(stage.window);
        Report(state, PixelMebibytes(kStackObjects), ResidentMebibytes() - before);
    }
}

void Strokes(benchmark::State& state, CStage& stage)
{
    stage.OpenPhoto();
    stage.window.Reset();
    Stroke(stage.window, {300, 300});
    const double before = ResidentMebibytes();
    for ([[maybe_unused]] auto iteration : state) {
        for (int stroke = 0; stroke < kStrokes; ++stroke)
            Stroke(stage.window, {200 + stroke * 10, 100 + stroke * 7});
        Report(state, PixelMebibytes(1), ResidentMebibytes() - before);
    }
    stage.window.Reset();
}

} // namespace

void AddMemoryCases(CStage& stage)
{
    const auto add = [&stage](const char* operation, const char* size,
                              void (*run)(benchmark::State&, CStage&)) {
        AddWindowCase(std::string("memory-use/") + operation, size, 1,
                      [&stage, run](benchmark::State& state) { run(state, stage); });
    };
    add("open-jpg", kPhotoName, OpenJpg);
    add("100-strokes", kPhotoName, Strokes);
    add("session", StackName(Stack::Photos), Session);
}
