// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"
#include "platform/dib/Pixel.h"
#include "platform/parallel/RowBands.h"

#include <vector>

namespace {

constexpr int kSquare = 8;

uint32_t PixelOf(Rgb colour)
{
    return uint32_t{colour.red} << 16 | uint32_t{colour.green} << 8 | colour.blue;
}

/// Whether a coordinate lies in an odd square; squares on both sides of 0 belong together, since the
/// division goes toward zero.
bool IsOddSquare(int coordinate, int offset)
{
    return ((int64_t{coordinate} + offset) / kSquare) % 2 != 0;
}

void ColourRow(uint8_t* pixel, const uint32_t* colours, size_t width)
{
    for (size_t x = 0; x < width; ++x, pixel += 4)
        StorePixel(pixel, (LoadPixel(pixel) & kOpaquePixel) | colours[x]);
}

} // namespace

void DrawCheckerboard(const BitmapView& view, Rgb a, Rgb b, Point offset)
{
    if (view.width <= 0)
        return;
    // One row of each kind of band; all others repeat them.
    const auto width = static_cast<size_t>(view.width);
    std::vector<uint32_t> even(width);
    std::vector<uint32_t> odd(width);
    for (int x = 0; x < view.width; ++x) {
        const bool isOdd = IsOddSquare(x, offset.x);
        even[static_cast<size_t>(x)] = PixelOf(isOdd ? b : a);
        odd[static_cast<size_t>(x)] = PixelOf(isOdd ? a : b);
    }
    constexpr int kPixelsPerMicrosecond = 5000;
    ForRowBands(view.height, BandRows(view.width, kPixelsPerMicrosecond), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const uint32_t* colours = IsOddSquare(y, offset.y) ? odd.data() : even.data();
            ColourRow(view.Row(y), colours, width);
        }
    });
}
