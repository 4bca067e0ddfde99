// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/MagicWand.h"

#include "canvas/ConnectedArea.h"
#include "canvas/PixelMatch.h"
#include "platform/parallel/RowBands.h"
#include "platform/region/RegionBuilder.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint8_t kOpaque = 128;

CPixelSet FindEverywhere(const CPackedDib& dib, const PixelRange& range)
{
    CPixelSet set = CPixelSet::Create(dib.Size(), BlockContent::Undefined);
    if (set.IsEmpty())
        return set;
    ForRowBands(dib.Height(), BandRows(dib.Width(), kMatchedPerMicrosecond), [&](int begin, int end) {
        for (int y = end - 1; y >= begin; --y) // as the rows stand in memory
            MatchPixels(ViewOf(dib), y, 0, set.Row(y), range, {});
    });
    return set;
}

CRegion RegionOf(const CPixelSet& set)
{
    size_t runs = 0;
    for (int y = set.Top(); y < set.Bottom(); ++y)
        runs += CountRuns(set.Row(y));
    CRegionBuilder builder(runs);
    if (builder.IsEmpty())
        return {};
    for (int y = set.Top(); y < set.Bottom(); ++y)
        VisitRuns(set.Row(y), [&](int left, int right) { builder.AddRun(y, left, right); });
    return builder.Finish();
}

} // namespace

CRegion WandRegion(const CPackedDib& dib, Point seed, int similarity, WandReach reach)
{
    if (dib.Width() == 0 || dib.Height() == 0)
        return {};
    const Point start{std::clamp(seed.x, 0, dib.Width() - 1), std::clamp(seed.y, 0, dib.Height() - 1)};
    uint32_t pixel = 0;
    std::memcpy(&pixel, dib.Row(start.y) + ptrdiff_t{start.x} * 4, sizeof pixel);
    const bool opaque = pixel >> 24 >= kOpaque;
    const PixelRange range = RangeAround(pixel, similarity, opaque ? kOpaque : 0, opaque ? 255 : kOpaque - 1);
    const CPixelSet set =
        reach == WandReach::Connected ? FindConnected(dib, range, start, {}) : FindEverywhere(dib, range);
    return set.IsEmpty() ? CRegion() : RegionOf(set);
}
