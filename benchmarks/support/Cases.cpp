// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Cases.h"

#include <QThreadPool>

#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>
#include <tbb/global_control.h>

#include <thread>

namespace {

/// Holds our own and the peers' threads down for as long as a case runs.
class CThreadLimit {
public:
    explicit CThreadLimit(Threads threads)
        : m_tbb(tbb::global_control::max_allowed_parallelism, static_cast<size_t>(Count(threads)))
    {
        cv::setNumThreads(Count(threads));
        QThreadPool::globalInstance()->setMaxThreadCount(Count(threads));
    }

private:
    static int Count(Threads threads)
    {
        return threads == Threads::One ? 1
                                       : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    }

    tbb::global_control m_tbb;
};

} // namespace

bool AddCase(BenchmarkCase benchmarkCase, std::function<std::function<void()>()> prepare)
{
    const std::string name = benchmarkCase.operation + '/' + benchmarkCase.size + '/' + benchmarkCase.who +
                             (benchmarkCase.threads == Threads::One ? "/t1" : "/tN");
    const auto run = [threads = benchmarkCase.threads, pixels = benchmarkCase.pixels,
                      prepare = std::move(prepare)](benchmark::State& state) {
        const CThreadLimit limit(threads);
        const std::function<void()> body = prepare();
        body(); // pages and caches as they are in use
        for ([[maybe_unused]] auto iteration : state) {
            body();
            benchmark::ClobberMemory();
        }
        if (pixels > 0) {
            state.counters["MPixel/s"] =
                benchmark::Counter(pixels * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMillisecond)->UseRealTime();
    return true;
}

std::string SizeName(int megapixels)
{
    return std::to_string(megapixels) + "MP";
}
