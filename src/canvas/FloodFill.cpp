// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FloodFill.h"

#include "canvas/ConnectedArea.h"
#include "canvas/PixelMatch.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>

namespace {

constexpr PixelRange kTransparent{0x00000000, 0x00FFFFFF};

PixelRange RangeOf(const FillSeed& seed)
{
    return RangeAround(seed.pixel, seed.tolerance, 1, 255);
}

void PaintEverywhere(CPackedDib& dib, const PixelRange& range, const CRegion& clip, const CFillBrush& brush)
{
    constexpr int kPart = 4096;
    const BitmapView picture = ViewOf(dib);
    const auto paintPart = [&](int y, int left) {
        std::array<uint64_t, WordsFor(kPart)> words;
        const auto count = static_cast<size_t>(WordsFor(std::min(kPart, picture.width - left)));
        const std::span<uint64_t> part = std::span(words).first(count);
        MatchPixels(picture, y, left, part, range, clip);
        uint8_t* const pixels = picture.Row(y) + ptrdiff_t{left} * 4;
        VisitRuns(part, [&](int from, int to) { brush.PaintRun(pixels + ptrdiff_t{from} * 4, to - from); });
    };
    ForRowBands(picture.height, BandRows(picture.width, kMatchedPerMicrosecond), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            for (int left = 0; left < picture.width; left += kPart)
                paintPart(y, left);
        }
    });
}

} // namespace

bool FillConnected(CPackedDib& dib, const FillSeed& seed, const Paint& paint, Point start,
                   const CRegion& clip)
{
    return PaintConnected(dib, RangeOf(seed), start, clip, {paint, CFillBrush::Mode::Over});
}

void FillEverywhere(CPackedDib& dib, const FillSeed& seed, const Paint& paint, const CRegion& clip)
{
    PaintEverywhere(dib, RangeOf(seed), clip, {paint, CFillBrush::Mode::Over});
}

bool FillConnectedTransparent(CPackedDib& dib, const Paint& paint, Point start, const CRegion& clip)
{
    return PaintConnected(dib, kTransparent, start, clip, {paint, CFillBrush::Mode::Replace});
}

void FillTransparentEverywhere(CPackedDib& dib, const Paint& paint, const CRegion& clip)
{
    PaintEverywhere(dib, kTransparent, clip, {paint, CFillBrush::Mode::Replace});
}
