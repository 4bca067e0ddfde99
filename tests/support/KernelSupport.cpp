// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/KernelSupport.h"

#include "support/VectorTargets.h"

void ExpectEverywhere(const Kernel& kernel, const CPackedDib& picture, const CPackedDib& expected)
{
    ForEachVectorTarget([&] { EXPECT_TRUE(SameBytes(kernel(picture), expected)); });
}

void ExpectSameResults(const Kernel& fast, const Kernel& reference)
{
    for (const Size size : kKernelSizes) {
        SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height));
        const CPackedDib picture = RandomDib(size.width, size.height, 7);
        ExpectEverywhere(fast, picture, reference(picture));
    }
}

void ExpectEmptyWhenMemoryRunsOut(const Kernel& kernel)
{
    EXPECT_TRUE(kernel({}).IsEmpty());
    const CPackedDib picture = RandomDib(61, 47, 3);
    for (int64_t after = 0; after < 1000; ++after) {
        const CAllocationFailure failure(after);
        if (!kernel(picture).IsEmpty()) {
            EXPECT_GT(after, 0) << "nothing was allocated";
            return;
        }
    }
    FAIL() << "the kernel gives nothing even with enough memory";
}
