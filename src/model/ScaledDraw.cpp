// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/BlendPixels.h"
#include "model/BlendRows.h"
#include "model/Compositing.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr int kScaleBits = 15;

/// Destination pixels of one axis that show the picture, and the picture pixel that each of them takes.
struct ScaledAxis {
    int begin = 0;
    std::vector<int> samples;
};

ScaledAxis ScaleAxis(int size, int position, uint16_t scale, int destination)
{
    const auto edge = [&](int64_t at) {
        return static_cast<int>(std::clamp<int64_t>((at * scale) >> kScaleBits, 0, destination));
    };
    ScaledAxis axis{edge(position), {}};
    for (int at = axis.begin, end = edge(int64_t{position} + size); at < end; ++at) {
        const int64_t sample = (int64_t{at} << kScaleBits) / scale - position;
        axis.samples.push_back(static_cast<int>(std::clamp<int64_t>(sample, 0, size - 1)));
    }
    return axis;
}

} // namespace

void DrawScaledWeighted(const BitmapView& destination, const CPackedDib& source, Point position,
                        uint16_t scale)
{
    const ScaledAxis columns = ScaleAxis(source.Width(), position.x, scale, destination.width);
    const ScaledAxis rows = ScaleAxis(source.Height(), position.y, scale, destination.height);
    std::vector<uint8_t> gathered(columns.samples.size() * 4);
    int y = rows.begin;
    for (const int sampledRow : rows.samples) {
        const uint8_t* from = source.Row(sampledRow);
        uint8_t* to = gathered.data();
        for (const int x : columns.samples) {
            std::memcpy(to, from + ptrdiff_t{x} * 4, 4);
            to += 4;
        }
        BlendRowWeighted(destination.Row(y++) + ptrdiff_t{columns.begin} * 4, gathered.data(),
                         columns.samples.size(), 0);
    }
}

void DrawScaledInteger(const BitmapView& destination, CPackedDib& source, Point position, uint16_t scale)
{
    const ScaledAxis columns = ScaleAxis(source.Width(), position.x, scale, destination.width);
    const ScaledAxis rows = ScaleAxis(source.Height(), position.y, scale, destination.height);
    int y = rows.begin;
    for (const int sampledRow : rows.samples) {
        uint8_t* to = destination.Row(y++) + ptrdiff_t{columns.begin} * 4;
        for (const int x : columns.samples) {
            uint8_t* pixel = source.Row(sampledRow) + ptrdiff_t{x} * 4;
            BlendPixelInteger(to, pixel, pixel[3]);
            to += 4;
        }
    }
}
