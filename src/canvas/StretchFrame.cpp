// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/StretchFrame.h"

#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr int kPixelsPerMicrosecond = 500;

/// The pixels of a row or column that take their colours from the source, from `first` on, and which one each
/// takes.
struct Sampled {
    int first = 0;
    std::vector<int> from;

    [[nodiscard]] int End() const { return first + static_cast<int>(from.size()); }
};

/// Places of a line at one zoom, found again in a line at another by the pixel of the document that they
/// show.
Sampled SampleLine(int corner, int length, int zoom, int sourceCorner, int sourceLength, int sourceZoom)
{
    Sampled sampled;
    for (int i = 0; i < length; ++i) {
        const int64_t shown = zoom > 0 ? (corner + i) / zoom : (int64_t{corner} + i) * -zoom;
        const int64_t from = (sourceZoom > 0 ? shown * sourceZoom : shown / -sourceZoom) - sourceCorner;
        if (from < 0)
            sampled.first = i + 1;
        else if (from < sourceLength)
            sampled.from.push_back(static_cast<int>(from));
    }
    return sampled;
}

} // namespace

Rect StretchFrame(const FramePart<BitmapView>& target, const FramePart<ConstBitmapView>& source)
{
    const Sampled columns = SampleLine(target.corner.x, target.pixels.width, target.zoom, source.corner.x,
                                       source.pixels.width, source.zoom);
    const Sampled rows = SampleLine(target.corner.y, target.pixels.height, target.zoom, source.corner.y,
                                    source.pixels.height, source.zoom);
    const auto width = columns.from.size();
    if (width == 0 || rows.from.empty())
        return {};
    ForRowBands(static_cast<int>(rows.from.size()), BandRows(static_cast<int>(width), kPixelsPerMicrosecond),
                [&](int begin, int end) {
                    for (int y = begin; y < end; ++y) {
                        uint8_t* row = target.pixels.Row(rows.first + y) + ptrdiff_t{columns.first} * 4;
                        const int from = rows.from[static_cast<size_t>(y)];
                        if (y > begin && from == rows.from[static_cast<size_t>(y) - 1]) {
                            std::memcpy(row,
                                        target.pixels.Row(rows.first + y - 1) + ptrdiff_t{columns.first} * 4,
                                        width * 4);
                            continue;
                        }
                        const auto* pixels = reinterpret_cast<const uint32_t*>(source.pixels.Row(from));
                        auto* const drawn = reinterpret_cast<uint32_t*>(row);
                        for (size_t x = 0; x < width; ++x)
                            drawn[x] = pixels[columns.from[x]];
                    }
                });
    return {columns.first, rows.first, columns.End(), rows.End()};
}
