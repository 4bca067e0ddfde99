// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerStack.h"

#include "model/LayerRows.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace {

/// Small enough that many pieces of the layers are hidden as a whole, large enough to be read in long runs.
constexpr Size kPiece{128, 8};

/// Pixels of all layers that one processor draws in about a tenth of a millisecond.
constexpr int64_t kPixelsPerBand = 200'000;

template <typename Use> void ForEachStrip(const Rect& rect, int width, Use use)
{
    for (int left = rect.left; left < rect.right; left += width)
        use(Rect{left, rect.top, std::min(rect.right, left + width), rect.bottom});
}

void DrawLayer(const BitmapView& destination, const PictureLayer& layer, const Rect& rect)
{
    const Rect area = layer.placement.area.Intersected(rect);
    if (area.IsEmpty())
        return;
    ForEachStrip(area, CLayerRows::kMaxColumns, [&](const Rect& strip) {
        CLayerRows rows(layer, strip.left, strip.Width());
        for (int y = strip.top; y < strip.bottom; ++y) {
            layer.blend(destination.Row(y) + ptrdiff_t{strip.left} * 4, rows.Row(y),
                        static_cast<size_t>(strip.Width()), layer.transparency);
        }
    });
}

/// Whether nothing below the layer shows in a piece.
bool Hides(const PictureLayer& layer, const Rect& piece)
{
    if (layer.transparency != 0 || layer.placement.area.Intersected(piece) != piece)
        return false;
    CLayerRows rows(layer, piece.left, piece.Width());
    for (int y = piece.top; y < piece.bottom; ++y) {
        if (!IsRowOpaque(rows.Row(y), static_cast<size_t>(piece.Width())))
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
    for (int top = band.top; top < band.bottom; top += kPiece.height) {
        const Rect row{band.left, top, band.right, std::min(band.bottom, top + kPiece.height)};
        ForEachStrip(row, kPiece.width, [&](const Rect& piece) { DrawPiece(destination, layers, piece); });
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
    const auto rows = static_cast<int>(std::max<int64_t>(1, bounds.Height() * kPixelsPerBand / pixels));
    const int grain = (rows + kPiece.height - 1) / kPiece.height * kPiece.height;
    tbb::parallel_for(
        tbb::blocked_range<int>(bounds.top, bounds.bottom, grain), [&](const tbb::blocked_range<int>& range) {
            DrawBand(destination, layers, {bounds.left, range.begin(), bounds.right, range.end()});
        });
}
