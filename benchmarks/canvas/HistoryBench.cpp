// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/HistoryTidier.h"
#include "support/Cases.h"
#include "support/OpenPicture.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kSizeInMegapixels = 12;

/// Strokes on 12 megapixels, with what the history costs as counters.
void BenchStrokes(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        OpenPicture open(kSizeInMegapixels);
        std::mt19937 random(1);
        state.ResumeTiming();
        for (int stroke = 0; stroke < count; ++stroke)
            open.Stroke(random);
        state.PauseTiming();
        state.counters["MiB at once"] = open.HeldMebibytes();
        CHistoryTidier tidier;
        while (tidier.Work(open.document, std::chrono::seconds(1))) {
        }
        state.counters["MiB after tidying"] = open.HeldMebibytes();
        tidier.Forget();
        state.ResumeTiming();
    }
}

const bool kRegistered = [] {
    for (const int megapixels : kMegapixels) {
        AddCase({"history/undo-redo-operation", SizeName(megapixels), "ours"}, [megapixels] {
            const auto open = std::make_shared<OpenPicture>(megapixels);
            open->Filter();
            return [open] {
                open->document.Undo();
                open->document.Redo();
            };
        });
    }
    AddCase({"history/undo-redo-stroke", SizeName(kSizeInMegapixels), "ours"}, [] {
        const auto open = std::make_shared<OpenPicture>(kSizeInMegapixels);
        std::mt19937 random(1);
        open->Stroke(random);
        CHistoryTidier tidier;
        while (tidier.Work(open->document, std::chrono::seconds(1))) {
        }
        return [open] {
            open->document.Undo();
            open->document.Redo();
        };
    });
    for (const int count : {26, 100})
        benchmark::RegisterBenchmark("history/strokes/12MP/ours/t1", BenchStrokes)
            ->Arg(count)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
