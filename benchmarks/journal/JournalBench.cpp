// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/Journal.h"
#include "support/OpenPicture.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <map>
#include <string>
#include <thread>
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
    void Forget() { m_times.clear(); }
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

/// The pointer goes from corner to corner in one move. measure(name, event) takes each event of the mouse.
template <typename Measure> void DragAcross(OpenPicture& open, ToolMode tool, const Measure& measure)
{
    const Size size = open.document.Canvas().Size();
    MouseInput input{open.view.Geometry().ToClient(Point{0, 0}), MouseButton::Left};
    open.view.SetMode(tool);
    measure("press", [&] { open.view.Press(input); });
    input.client = open.view.Geometry().ToClient(Point{size.width - 1, size.height - 1});
    measure("move", [&] { open.view.Move(input); });
    measure("release", [&] { open.view.Release(input); });
}

/// The first events after the whole picture has changed, before the journal could take it down: the median
/// and the worst of kRounds rounds, behind two for which the system has to find the memory.
void BenchAfterFilter(benchmark::State& state)
{
    const bool hasJournal = state.range(0) != 0;
    const auto afterwards = static_cast<Afterwards>(state.range(1));
    constexpr int kRounds = 30;
    constexpr int kFirstRounds = 2;
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
        for (int round = 0; round < kFirstRounds + kRounds; ++round) {
            if (round == kFirstRounds)
                times.Forget();
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
            DragAcross(open, kTools[static_cast<size_t>(afterwards)],
                       [&](const char* name, const auto& event) { times.Measure(name, event); });
        }
        times.Report(state);
    }
    std::error_code ignored;
    std::filesystem::remove_all(parent, ignored);
}

enum class Noted : int64_t { Strokes, Filters, FloodFills, UndoAndRedo };

/// How long it takes until what has been done is on the disk, from its end, with steps of idle work as the
/// window does them. isWrittenAnew: while the history's five whole pictures are written anew, again and
/// again.
void BenchUntilOnDisk(benchmark::State& state)
{
    const auto noted = static_cast<Noted>(state.range(0));
    const bool isWrittenAnew = state.range(1) != 0;
    constexpr int kRounds = 30;
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "pixolune-bench-journal";
    for ([[maybe_unused]] auto iteration : state) {
        std::filesystem::create_directories(folder);
        OpenPicture open(12);
        const bool isWhole = noted == Noted::Filters || noted == Noted::FloodFills;
        open.settings.Set(Setting::UndoMaxTimes, isWhole ? 5 : 50);
        CJournalWriter writer;
        const auto target = writer.Open(folder / "1.journal");
        CDocumentJournal journal(open.document, writer, target);
        for (int filter = 0; filter < 5; ++filter)
            open.Invert();
        journal.Finish();
        writer.Drain();
        std::mt19937 random(1);
        const auto act = [&](int round) {
            if (noted == Noted::Strokes)
                open.Stroke(random);
            else if (noted == Noted::Filters)
                open.Invert();
            else if (noted == Noted::FloodFills)
                DragAcross(open, ToolMode::FloodFill, [](const char*, const auto& event) { event(); });
            else
                round % 2 == 0 ? open.document.Undo() : open.document.Redo();
        };
        std::vector<double> times;
        std::vector<double> steps;
        size_t anewBytes = 0;
        const auto step = [&] {
            const double begin = WallMilliseconds();
            journal.Flush();
            journal.Work(std::chrono::steady_clock::now() + std::chrono::milliseconds(2));
            steps.push_back(WallMilliseconds() - begin);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        };
        for (int round = 0; round < kRounds; ++round) {
            if (isWrittenAnew && round % 5 == 0)
                journal.Rewrite();
            for (int pause = 0; isWrittenAnew && pause < 20; ++pause)
                step();
            anewBytes += writer.WaitingBytes(JournalCopy::Anew);
            act(round);
            const double end = WallMilliseconds();
            do {
                step();
            } while (!journal.IsOnDisk());
            times.push_back(WallMilliseconds() - end);
        }
        std::ranges::sort(times);
        state.counters["on disk ms median"] = times[times.size() / 2];
        state.counters["on disk ms worst"] = times.back();
        state.counters["bytes of the new file waiting"] = static_cast<double>(anewBytes) / kRounds;
        state.counters["step wall ms worst"] = *std::ranges::max_element(steps);
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
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
    for (const Noted noted : {Noted::Strokes, Noted::Filters, Noted::FloodFills, Noted::UndoAndRedo})
        for (const int64_t isWrittenAnew : {0, 1})
            benchmark::RegisterBenchmark("journal/until-on-disk/12MP/ours/t1", BenchUntilOnDisk)
                ->Args({static_cast<int64_t>(noted), isWrittenAnew})
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
