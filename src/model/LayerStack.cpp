// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerStack.h"

#include "model/LayerRows.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

/// Pixels, of all layers and with those skipped between them, that one processor draws in about a fifth of a
/// millisecond.
constexpr int64_t kPixelsPerBand = 400'000;

/// Tiles choose the layers that touch them. Where one of these may hide others, the tile is cut into pieces
/// so small that much of what lies below an opaque pixel is never read. Both in pixels of the pictures.
constexpr Size kTile{256, 32};
constexpr int kPieceWidth = 32;

struct Tile {
    Rect rect;
    std::vector<const PictureLayer*> layers;
};

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

/// Calls `use(part)` for the rectangle cut into parts of at most the given size.
template <typename Use> void ForEachPart(const Rect& rect, Size size, const Use& use)
{
    for (int top = rect.top; top < rect.bottom; top += size.height) {
        for (int left = rect.left; left < rect.right; left += size.width) {
            use(Rect{left, top, std::min(rect.right, left + size.width),
                     std::min(rect.bottom, top + size.height)});
        }
    }
}

bool MayHide(const PictureLayer& layer, const Rect& rect)
{
    return layer.transparency == 0 && layer.placement.area.Intersected(rect) == rect;
}

/// Draws layers onto a part of the destination, on one processor.
class CBandPainter {
public:
    CBandPainter(const BitmapView& destination, std::span<const PictureLayer> layers)
        : m_destination(destination), m_layers(layers), m_enlargement(layers.front().placement.enlargement)
    {
    }

    void Draw(const Rect& band)
    {
        if (m_layers.size() == 1) {
            DrawLayer(m_layers.front(), band);
            return;
        }
        ForEachPart(band, {band.Width(), kTile.height * m_enlargement},
                    [this](const Rect& row) { DrawTiles(row); });
    }

private:
    /// Draws a row of tiles, those in pieces line by line across all of them, so that pictures are read in
    /// the order in which they stand in memory.
    void DrawTiles(const Rect& row)
    {
        std::vector<Tile> inPieces;
        ForEachPart(row, {kTile.width * m_enlargement, row.Height()}, [&](const Rect& rect) {
            Tile tile{rect, {}};
            for (const PictureLayer& layer : m_layers) {
                if (!layer.placement.area.Intersected(rect).IsEmpty())
                    tile.layers.push_back(&layer);
            }
            if (HasLayerThatMayHide(tile)) {
                inPieces.push_back(std::move(tile));
                return;
            }
            for (const PictureLayer* layer : tile.layers)
                DrawLayer(*layer, rect);
        });
        ForEachPart(row, {row.Width(), m_enlargement}, [&](const Rect& line) {
            for (const Tile& tile : inPieces) {
                ForEachPart(tile.rect.Intersected(line), {kPieceWidth * m_enlargement, m_enlargement},
                            [&](const Rect& piece) { DrawPiece(tile.layers, piece); });
            }
        });
    }

    [[nodiscard]] static bool HasLayerThatMayHide(const Tile& tile)
    {
        const auto mayHide = [&tile](const PictureLayer* layer) { return MayHide(*layer, tile.rect); };
        return tile.layers.size() > 1 && std::any_of(tile.layers.begin() + 1, tile.layers.end(), mayHide);
    }

    void DrawPiece(std::span<const PictureLayer* const> layers, const Rect& piece)
    {
        size_t first = layers.size() - 1;
        while (first > 0 && !Hides(*layers[first], piece))
            --first;
        for (const PictureLayer* layer : layers.subspan(first))
            DrawLayer(*layer, piece);
    }

    /// Whether nothing below the layer shows in a piece.
    [[nodiscard]] bool Hides(const PictureLayer& layer, const Rect& piece)
    {
        if (!MayHide(layer, piece))
            return false;
        CLayerRows rows(layer, piece.left, piece.Width(), m_scratch);
        for (int y = piece.top; y < piece.bottom; ++y) {
            const uint8_t* row = rows.Row(y);
            if (row[3] != 255 || !IsRowOpaque(row, static_cast<size_t>(piece.Width())))
                return false;
        }
        return true;
    }

    void DrawLayer(const PictureLayer& layer, const Rect& rect)
    {
        const Rect area = layer.placement.area.Intersected(rect);
        if (area.IsEmpty())
            return;
        if (layer.placement.IsPlain()) {
            DrawStrip(layer, area);
            return;
        }
        ForEachPart(area, {GatheredRow::kMaxColumns, area.Height()},
                    [&](const Rect& strip) { DrawStrip(layer, strip); });
    }

    void DrawStrip(const PictureLayer& layer, const Rect& strip)
    {
        CLayerRows rows(layer, strip.left, strip.Width(), m_scratch);
        ForEachRow(m_destination, strip.top, strip.bottom, [&](int y) {
            layer.blend(m_destination.Row(y) + ptrdiff_t{strip.left} * 4, rows.Row(y),
                        static_cast<size_t>(strip.Width()), layer.transparency);
        });
    }

    const BitmapView& m_destination;
    std::span<const PictureLayer> m_layers;
    int m_enlargement;
    GatheredRow m_scratch;
};

} // namespace

void DrawLayers(const BitmapView& destination, std::span<const PictureLayer> layers)
{
    Rect bounds;
    int64_t pixels = 0;
    for (const PictureLayer& layer : layers) {
        const Rect& area = layer.placement.area;
        bounds = bounds.United(area);
        if (!area.IsEmpty())
            pixels += int64_t{area.Width()} * area.Height() * layer.placement.step;
    }
    if (bounds.IsEmpty())
        return;
    const int64_t bandRows = bounds.Height() * kPixelsPerBand / pixels + 1;
    ForRowBands(bounds.Height(), static_cast<int>(bandRows), [&](int begin, int end) {
        const Rect band{bounds.left, bounds.top + begin, bounds.right, bounds.top + end};
        CBandPainter(destination, layers).Draw(band);
    });
}
