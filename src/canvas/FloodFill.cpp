// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FloodFill.h"

#include "canvas/ConnectedArea.h"
#include "canvas/PixelMatch.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <array>

namespace {

constexpr int64_t kPixelsPerTask = 1 << 18; ///< some 0.1 ms

constexpr PixelRange kTransparent{0x00000000, 0x00FFFFFF};

PixelRange RangeOf(const FillSeed& seed)
{
    return RangeAround(seed.pixel, seed.tolerance, 1, 255);
}

/// Calls paintRow(y) for every row, split over the processors.
template <typename PaintRow> void ForEachRow(const CPackedDib& dib, PaintRow paintRow)
{
    const auto grain = static_cast<size_t>(kPixelsPerTask / std::max(1, dib.Width()) + 1);
    tbb::parallel_for(tbb::blocked_range<int>(0, dib.Height(), grain), [&](const auto& rows) {
        for (int y = rows.begin(); y < rows.end(); ++y)
            paintRow(y);
    });
}

void PaintRuns(CPackedDib& dib, int y, int left, std::span<const uint64_t> words, const CFillBrush& brush)
{
    uint8_t* const row = dib.Row(y) + ptrdiff_t{left} * 4;
    VisitRuns(words, [&](int from, int to) { brush.PaintRun(row + ptrdiff_t{from} * 4, to - from); });
}

bool PaintConnected(CPackedDib& dib, const PixelRange& range, const CFillBrush& brush, Point start,
                    const CRegion& clip)
{
    if (!Rect::At({0, 0}, dib.Size()).Contains(start))
        return true;
    const CPixelSet area = FindConnected(dib, range, start, clip);
    if (area.IsEmpty())
        return false;
    ForEachRow(dib, [&](int y) { PaintRuns(dib, y, 0, area.Row(y), brush); });
    return true;
}

bool PaintEverywhere(CPackedDib& dib, const PixelRange& range, const CFillBrush& brush, const CRegion& clip)
{
    ForEachRow(dib, [&](int y) {
        for (int strip = 0; strip < StripsFor(dib.Width()); ++strip) {
            std::array<uint64_t, kStripWords> words;
            PaintRuns(dib, y, strip * kStripPixels, MatchStrip(dib, y, strip, range, clip, words.data()),
                      brush);
        }
    });
    return true;
}

} // namespace

bool FillConnected(CPackedDib& dib, const FillSeed& seed, const Paint& paint, Point start,
                   const CRegion& clip)
{
    return PaintConnected(dib, RangeOf(seed), {paint, CFillBrush::Mode::Over}, start, clip);
}

bool FillEverywhere(CPackedDib& dib, const FillSeed& seed, const Paint& paint, const CRegion& clip)
{
    return PaintEverywhere(dib, RangeOf(seed), {paint, CFillBrush::Mode::Over}, clip);
}

bool FillConnectedTransparent(CPackedDib& dib, const Paint& paint, Point start, const CRegion& clip)
{
    return PaintConnected(dib, kTransparent, {paint, CFillBrush::Mode::Replace}, start, clip);
}

bool FillTransparentEverywhere(CPackedDib& dib, const Paint& paint, const CRegion& clip)
{
    return PaintEverywhere(dib, kTransparent, {paint, CFillBrush::Mode::Replace}, clip);
}
