// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/parallel/RowBands.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>

namespace {

constexpr int kWorthwhileMicroseconds = 200;

} // namespace

void ForRowBands(int rows, int smallestBand, const std::function<void(int begin, int end)>& work)
{
    if (rows <= 0)
        return;
    const int grain = std::max(1, smallestBand);
    // A range splits only while it is larger than its grain, so that halves may be half a grain.
    if (rows < 2 * grain) {
        work(0, rows);
        return;
    }
    tbb::parallel_for(tbb::blocked_range<int>(0, rows, 2 * grain - 1),
                      [&work](const tbb::blocked_range<int>& band) { work(band.begin(), band.end()); });
}

int BandRows(int width, int pixelsPerMicrosecond)
{
    return std::max(1, kWorthwhileMicroseconds * pixelsPerMicrosecond / std::max(1, width));
}
