// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/FuzzTargets.h"

#include <cstdio>
#include <cstdlib>

namespace {

const FuzzTarget* chosen = nullptr;

} // namespace

/// PIXOLUNE_FUZZ_TARGET in the environment names the target.
extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    const char* name = std::getenv("PIXOLUNE_FUZZ_TARGET");
    chosen = name != nullptr ? FindFuzzTarget(name) : nullptr;
    if (chosen == nullptr) {
        std::fputs("PIXOLUNE_FUZZ_TARGET names no target\n", stderr);
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    chosen->run(chosen->name, {data, size});
    return 0;
}
