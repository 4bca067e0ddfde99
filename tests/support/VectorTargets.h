// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <hwy/highway.h>

/// Runs a check once for each kind of vector instructions that this processor has and the kernels were built
/// for, and leaves the best one chosen.
template <typename Check> void ForEachVectorTarget(Check check)
{
    const int64_t targets = hwy::SupportedTargets() & HWY_TARGETS;
    for (int64_t left = targets; left != 0; left &= left - 1) {
        const int64_t target = left & -left;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        check();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}
