// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerStack.h"

#include "model/LayerRows.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>

namespace {

/// Pixels of all layers that one processor draws in about a tenth of a millisecond.
constexpr int64_t kPixelsPerBand = 200'000;

/// Width of the pieces that the destination is cut into for several layers, in pixels of the pictures. Their
/// height is one such pixel. Small, so that much of what lies below an opaque pixel is never read.
constexpr int kPieceWidth = 32;

/// Calls `use(row)` in the order in which the rows stand in memory.
template <typename Use> void ForEachRow(const BitmapView& view, int top, int bottom, const Use& use)
{
    if (view.stride < 0) {
        for (int y = bottom - 1; y >= top; --y)
            use(y);
    } else {
        for (int y = top; y < bottom; ++y)
            use(y);
    }
}

template <typename Use> void ForEachStrip(const Rect& rect, int width, const Use& use)
{
    for (int left = rect.left; left < rect.right; left += width)
        use(Rect{left, rect.top, std::min(rect.right, left + width), rect.bottom});
}

void DrawLayer(const BitmapView& destination, const PictureLayer& layer, const Rect& rect)
{
    const Rect area = layer.placement.area.Intersected(rect);
    if (area.IsEmpty())
        return;
    const int widest = layer.placement.IsPlain() ? area.Width() : CLayerRows::kMaxColumns;
    ForEachStrip(area, widest, [&](const Rect& strip) {
        CLayerRows rows(layer, strip.left, strip.Width());
        ForEachRow(destination, strip.top, strip.bottom, [&](int y) {
            layer.blend(destination.Row(y) + ptrdiff_t{strip.left} * 4, rows.Row(y),
                        static_cast<size_t>(strip.Width()), layer.transparency);
        });
    });
}

/// Whether nothing below the layer shows in a piece.
bool Hides(const PictureLayer& layer, const Rect& piece)
{
    if (layer.transparency != 0 || layer.placement.area.Intersected(piece) != piece)
        return false;
    CLayerRows rows(layer, piece.left, piece.Width());
    for (int y = piece.top; y < piece.bottom; ++y) {
        const uint8_t* row = rows.Row(y);
        if (row[3] != 255 || !IsRowOpaque(row, static_cast<size_t>(piece.Width())))
            return false;
    }
    return true;
}

void DrawPiece(const BitmapView& destination, std::span<const PictureLayer> layers, const Rect& piece)
{
    size_t first = layers.size() - 1;
    while (first > 0 && !Hides(layers[first], piece))
        --first;
    for (const PictureLayer& layer : layers.subspan(first))
        DrawLayer(destination, layer, piece);
}

void DrawBand(const BitmapView& destination, std::span<const PictureLayer> layers, const Rect& band)
{
    if (layers.size() == 1) {
        DrawLayer(destination, layers.front(), band);
        return;
    }
    const int enlargement = layers.front().placement.enlargement;
    for (int top = band.top; top < band.bottom; top += enlargement) {
        const Rect row{band.left, top, band.right, std::min(band.bottom, top + enlargement)};
        ForEachStrip(row, kPieceWidth * enlargement,
                     [&](const Rect& piece) { DrawPiece(destination, layers, piece); });
    }
}

} // namespace

void DrawLayers(const BitmapView& destination, std::span<const PictureLayer> layers)
{
    Rect bounds;
    int64_t pixels = 0;
    for (const PictureLayer& layer : layers) {
        const Rect& area = layer.placement.area;
        bounds = bounds.United(area);
        if (!area.IsEmpty())
            pixels += int64_t{area.Width()} * area.Height();
    }
    if (bounds.IsEmpty())
        return;
    if (pixels < 2 * kPixelsPerBand) {
        DrawBand(destination, layers, bounds);
        return;
    }
    const int64_t rows = bounds.Height() * kPixelsPerBand / pixels + 1;
    tbb::parallel_for(
        tbb::blocked_range<int>(bounds.top, bounds.bottom, static_cast<size_t>(rows)),
        [&](const tbb::blocked_range<int>& range) {
            DrawBand(destination, layers, {bounds.left, range.begin(), bounds.right, range.end()});
        });
}
