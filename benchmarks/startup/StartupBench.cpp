// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"
#include "platform/codec/SaveImage.h"
#include "platform/codec/SaveOptions.h"
#include "startup/ScreenWatch.h"
#include "startup/StartedProgram.h"
#include "support/Inputs.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

// From the start of a program until the picture named on its command line is on the screen, with the memory
// that it takes until some time later. Wants a display of its own, without a window manager.

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr Size kPicture{1920, 1080}; ///< 2 megapixels
constexpr uint32_t kMark = 0xE01A86; ///< a colour that no program decorates itself with
constexpr int kMarkDistance = 160;
constexpr int kMarkWidth = 32;
constexpr auto kStep = 1ms;
constexpr auto kPatience = 60s;
constexpr auto kAfterwards = 1500ms; ///< for panels that are filled later

struct Program {
    const char* name;
    std::vector<std::string> words; ///< before the picture
};

/// A photo with stripes in the colour that is looked for.
bool WritePicture(const std::filesystem::path& path)
{
    CPackedDib picture = CutOut(BackdropPicture(12), 900, 700, kPicture.width, kPicture.height);
    for (int y = 0; y < kPicture.height; ++y) {
        auto* row = reinterpret_cast<uint32_t*>(picture.Row(y));
        for (int x = 0; x < kPicture.width; ++x) {
            if (x % kMarkDistance < kMarkWidth)
                row[x] = 0xFF000000 | kMark;
        }
    }
    return CImage::SaveImageFile(path, picture, PngOptions{}.Value(), nullptr);
}

std::chrono::duration<double> Since(Clock::time_point start)
{
    return Clock::now() - start;
}

/// Each start is the first one: what was left unsaved before is not offered again.
void ForgetState(const std::filesystem::path& folder)
{
    std::filesystem::remove_all(folder);
    setenv("XDG_STATE_HOME", folder.c_str(), 1);
}

void Start(benchmark::State& state, const Program& program, const std::filesystem::path& picture)
{
    const CScreenWatch screen;
    if (!screen.IsOpen()) {
        state.SkipWithError("no display");
        return;
    }
    std::vector<std::string> words = program.words;
    words.push_back(picture.string());
    for ([[maybe_unused]] auto iteration : state) {
        ForgetState(picture.parent_path() / "state");
        const Clock::time_point start = Clock::now();
        CStartedProgram started(words);
        double firstWindow = 0;
        while (!screen.ShowsColour(kMark)) {
            if (firstWindow == 0 && screen.ShowsWindow())
                firstWindow = Since(start).count();
            if (!started.IsRunning() || Since(start) > kPatience) {
                state.SkipWithError("shows no picture");
                return;
            }
            std::this_thread::sleep_for(kStep);
        }
        const double shown = Since(start).count();
        state.SetIterationTime(shown);
        state.counters["FirstWindowMs"] = (firstWindow == 0 ? shown : firstWindow) * 1000;
        std::this_thread::sleep_for(kAfterwards);
        state.counters["PeakMiB"] = started.PeakMebibytes();
    }
    std::this_thread::sleep_for(100ms); // the display forgets the windows
}

} // namespace

/// usage: pixolune_startup_bench PIXOLUNE BARE-WINDOW FOLDER, and what the benchmark library knows
int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc != 4)
        return EXIT_FAILURE;
    const std::filesystem::path picture = std::filesystem::path(argv[3]) / "startup.png";
    if (!WritePicture(picture))
        return EXIT_FAILURE;
    const Program programs[] = {{"ours", {argv[1]}},
                                {"bare-window", {argv[2]}},
                                {"kolourpaint", {"kolourpaint"}},
                                {"gimp", {"gimp", "--no-splash", "--new-instance"}}};
    for (const Program& program : programs) {
        auto* const row =
            benchmark::RegisterBenchmark(
                (std::string("startup/picture-shown/2MP/") + program.name + "/tN").c_str(),
                [&program, &picture](benchmark::State& state) { Start(state, program, picture); })
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime();
        // It was ended by force, and asks about that when it is started again.
        if (program.words.front() == "gimp")
            row->Repetitions(1);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
