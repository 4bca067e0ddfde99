// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

int main(int argc, char** argv)
{
#ifdef __GLIBC__
    // Freed pages stay with the process: nobody pays for faulting in the same large blocks on every call.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 2'000'000'000);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
