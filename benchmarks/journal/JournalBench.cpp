// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/Journal.h"
#include "support/OpenPicture.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace {

/// What this thread has worked: neighbours on a shared machine do not count.
double Milliseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

double WallMilliseconds()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

constexpr int kStrokes = 100;

enum class Journals : int64_t { None, Kept, WrittenAnew };

/// Mouse messages of strokes on 12 megapixels: what the slowest and the middle one take, with a journal and
/// without, and what the journal takes on the disk. Between two messages the program has the time of a step
/// of idle work, as it does between those of a mouse. Journals that are written anew begin again with that
/// every five strokes, so that the thread always has whole pictures to pack.
void BenchMessages(benchmark::State& state)
{
    const auto journals = static_cast<Journals>(state.range(0));
    constexpr int kStrokesBetween = 5;
    const std::filesystem::path parent = std::filesystem::temp_directory_path() / "pixolune-bench-journal";
    for ([[maybe_unused]] auto iteration : state) {
        OpenPicture open(12);
        const auto journal = journals == Journals::None ? nullptr : CJournal::Create(parent);
        uintmax_t begun = 0;
        const auto size = [&] {
            uintmax_t bytes = 0;
            for (const auto& file : std::filesystem::recursive_directory_iterator(parent))
                bytes += file.is_regular_file() ? file.file_size() : 0;
            return bytes;
        };
        if (journal) {
            journal->Begin(open.document);
            journal->Finish();
            journal->WaitUntilWritten();
            begun = size();
        }
        std::vector<double> messages;
        std::vector<double> steps{0};
        std::vector<double> waits;
        open.onMessage = [&](const auto& message) {
            const double begin = Milliseconds();
            const double wallBegin = WallMilliseconds();
            message();
            messages.push_back(Milliseconds() - begin);
            waits.push_back(WallMilliseconds() - wallBegin);
            if (!journal)
                return;
            const double idle = WallMilliseconds();
            journal->Note();
            journal->Work(std::chrono::milliseconds(2));
            steps.push_back(WallMilliseconds() - idle);
        };
        std::mt19937 random(1);
        for (int stroke = 0; stroke < kStrokes; ++stroke) {
            if (journals == Journals::WrittenAnew && stroke % kStrokesBetween == 0)
                journal->Distrust();
            open.Stroke(random);
        }
        for (auto* times : {&messages, &steps, &waits})
            std::ranges::sort(*times);
        state.counters["median ms"] = messages[messages.size() / 2];
        state.counters["worst ms"] = messages.back();
        state.counters["worst wall ms"] = waits.back();
        state.counters["worst step ms"] = steps.back();
        if (journal) {
            journal->Finish();
            journal->WaitUntilWritten();
            state.counters["bytes per stroke"] = static_cast<double>(size() - begun) / kStrokes;
        }
    }
    std::error_code ignored;
    std::filesystem::remove_all(parent, ignored);
}

/// What the program's thread has to do at once, and its steps of idle work between that.
class CEventTimes {
public:
    explicit CEventTimes(CJournal* journal) : m_journal(journal) {}

    /// An event as it comes from the person at the program, and the idle time behind it.
    template <typename Event> void Measure(const char* name, const Event& event)
    {
        Take(name, event);
        if (m_journal == nullptr)
            return;
        Take("idle step", [this] {
            m_journal->Note();
            m_journal->Work(std::chrono::milliseconds(2));
        });
    }
    void Report(benchmark::State& state)
    {
        for (auto& [name, times] : m_times) {
            for (auto& [unit, values] : times) {
                std::ranges::sort(values);
                state.counters[name + unit + " median"] = values[values.size() / 2];
                state.counters[name + unit + " worst"] = values.back();
            }
        }
    }

private:
    template <typename Event> void Take(const char* name, const Event& event)
    {
        const double begin = Milliseconds();
        const double wallBegin = WallMilliseconds();
        event();
        m_times[name][" cpu ms"].push_back(Milliseconds() - begin);
        m_times[name][" wall ms"].push_back(WallMilliseconds() - wallBegin);
    }

    CJournal* m_journal;
    std::map<std::string, std::map<std::string, std::vector<double>>> m_times;
};

enum class Afterwards : int64_t { Pencil, Rectangle, FloodFill, Undo };

/// The pointer goes from corner to corner in one move.
void DragAcross(OpenPicture& open, ToolMode tool, CEventTimes& times)
{
    const Size size = open.document.Canvas().Size();
    MouseInput input{open.view.Geometry().ToClient(Point{0, 0}), MouseButton::Left};
    open.view.SetMode(tool);
    times.Measure("press", [&] { open.view.Press(input); });
    input.client = open.view.Geometry().ToClient(Point{size.width - 1, size.height - 1});
    times.Measure("move", [&] { open.view.Move(input); });
    times.Measure("release", [&] { open.view.Release(input); });
}

/// The first events after the whole picture has changed, before the journal could take it down: the median
/// and the worst of `kRounds` rounds.
void BenchAfterFilter(benchmark::State& state)
{
    const bool hasJournal = state.range(0) != 0;
    const auto afterwards = static_cast<Afterwards>(state.range(1));
    constexpr int kRounds = 30;
    const std::filesystem::path parent = std::filesystem::temp_directory_path() / "pixolune-bench-journal";
    for ([[maybe_unused]] auto iteration : state) {
        OpenPicture open(12);
        open.settings.Set(Setting::UndoMaxTimes, 3);
        open.settings.Set(Setting::PaintLineWidth, 50);
        open.settings.Set(Setting::AllowPaintTransparence, 0);
        const auto journal = hasJournal ? CJournal::Create(parent) : nullptr;
        if (journal)
            journal->Begin(open.document);
        CEventTimes times(journal.get());
        for (int round = 0; round < kRounds; ++round) {
            if (journal) {
                journal->Finish();
                journal->WaitUntilWritten();
            }
            open.Invert();
            if (afterwards == Afterwards::Undo) {
                times.Measure("undo", [&] { open.document.Undo(); });
                times.Measure("redo", [&] { open.document.Redo(); });
                continue;
            }
            constexpr ToolMode kTools[] = {ToolMode::Pencil, ToolMode::Rectangle, ToolMode::FloodFill};
            DragAcross(open, kTools[static_cast<size_t>(afterwards)], times);
        }
        times.Report(state);
    }
    std::error_code ignored;
    std::filesystem::remove_all(parent, ignored);
}

const bool kRegistered = [] {
    for (const Journals journals : {Journals::None, Journals::Kept, Journals::WrittenAnew})
        benchmark::RegisterBenchmark("journal/stroke-messages/12MP/ours/t1", BenchMessages)
            ->Arg(static_cast<int64_t>(journals))
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    for (const Afterwards afterwards :
         {Afterwards::Pencil, Afterwards::Rectangle, Afterwards::FloodFill, Afterwards::Undo})
        for (const int64_t hasJournal : {0, 1})
            benchmark::RegisterBenchmark("journal/after-filter/12MP/ours/t1", BenchAfterFilter)
                ->Args({hasJournal, static_cast<int64_t>(afterwards)})
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
