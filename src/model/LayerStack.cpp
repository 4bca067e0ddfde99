// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerStack.h"

#include "model/BlendStack.h"
#include "model/LayerRows.h"
#include "model/SampleRow.h"
#include "platform/memory/Prefetch.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace {

/// Pixels, of all layers and with those skipped between them, that one processor draws in about a fifth of a
/// millisecond.
constexpr int64_t kPixelsPerBand = 400'000;

/// So many pixels take as long as the way to the next row, which lies elsewhere in memory.
constexpr int kPixelsPerRow = 128;

/// Every tile of the destination chooses the layers that it needs. Small enough for many of them to lie
/// within what is opaque or clear.
constexpr Size kTile{2 * kStackPixels, 16};

/// From so many layers on it pays to look whether the upper ones decide a pixel.
constexpr size_t kDeepStack = 4;

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

/// Those of the layers that touch a rectangle, in their order.
void FindTouching(std::span<const PictureLayer* const> layers, const Rect& rect,
                  std::vector<const PictureLayer*>& touching)
{
    touching.clear();
    for (const PictureLayer* layer : layers) {
        if (!layer->placement.area.Intersected(rect).IsEmpty())
            touching.push_back(layer);
    }
}

/// Bounds of the alphas that a layer shows within a part of its area.
AlphaRange AlphasShown(const PictureLayer& layer, const Rect& part)
{
    if (layer.alphas == nullptr)
        return {};
    const Placement& placement = layer.placement;
    const Rect pixels{placement.SourceX(part.left), placement.SourceY(part.top),
                      placement.SourceX(part.right - 1) + 1, placement.SourceY(part.bottom - 1) + 1};
    // Looking at all of a tile of which only some samples are wanted takes longer than it saves.
    const UnknownTiles unknown = placement.step > 2 ? UnknownTiles::Spare : UnknownTiles::Find;
    return layer.alphas->Within(pixels, layer.pixels, unknown).Less(layer.transparency);
}

/// A layer where it covers all of a tile.
struct Column {
    const uint8_t* corner; ///< the pixel in the tile's corner
    ptrdiff_t rowBytes;    ///< to the pixel shown one row further down
    size_t step;
    uint8_t transparency;
};

/// A tile with many layers, all of which cover it, the topmost one first.
struct DeepTile {
    Rect rect;
    std::vector<Column> columns;
};

/// Draws layers onto a part of the destination, on one processor.
class CBandPainter {
public:
    explicit CBandPainter(const BitmapView& destination) : m_destination(destination) {}

    void Draw(const Rect& band, std::span<const PictureLayer* const> layers)
    {
        if (layers.size() == 1) {
            DrawLayer(*layers.front(), band);
            return;
        }
        FindTouching(layers, band, m_inBand);
        ForEachPart(band, {band.Width(), kTile.height}, [this](const Rect& row) { DrawTiles(row); });
    }

private:
    /// Draws a row of tiles, the deep ones line by line across all of them, so that pictures are read in the
    /// order in which they stand in memory.
    void DrawTiles(const Rect& row)
    {
        FindTouching(m_inBand, row, m_inRow);
        m_deepCount = 0;
        ForEachPart(row, kTile, [this](const Rect& tile) {
            FindShown(tile);
            if (IsDeep(tile)) {
                AddDeep(tile);
            } else if (m_shown == m_shownInRun && m_run.right == tile.left) {
                m_run.right = tile.right;
            } else {
                DrawRun();
                m_run = tile;
                std::swap(m_shown, m_shownInRun);
            }
        });
        DrawRun();
        const std::span deep(m_deep.data(), m_deepCount);
        if (deep.empty())
            return;
        ForEachRow(m_destination, row.top, row.bottom, [&](int y) {
            for (const DeepTile& tile : deep)
                DrawDeep(tile, y);
        });
    }

    void DrawRun()
    {
        const bool isNarrow = m_run.Width() <= kNarrow;
        for (size_t i = m_shownInRun.size(); i-- > 0;) {
            if (isNarrow && i >= kLayersAhead)
                PrefetchLayer(*m_shownInRun[i - kLayersAhead], m_run);
            DrawLayer(*m_shownInRun[i], m_run);
        }
        m_shownInRun.clear();
        m_run = {};
    }

    /// Finds the layers that show in a tile, the topmost one first.
    void FindShown(const Rect& tile)
    {
        m_shown.clear();
        for (size_t i = m_inRow.size(); i-- > 0;) {
            const PictureLayer& layer = *m_inRow[i];
            const Rect area = layer.placement.area.Intersected(tile);
            if (area.IsEmpty())
                continue;
            const AlphaRange alphas = AlphasShown(layer, area);
            if (alphas.highest == 0 && layer.blend == BlendRowWeighted)
                continue;
            m_shown.push_back(&layer);
            if (alphas.lowest == 255 && area == tile)
                return;
        }
    }

    [[nodiscard]] bool IsDeep(const Rect& tile) const
    {
        const auto fits = [&tile](const PictureLayer* layer) {
            return layer->blend == BlendRowWeighted && layer->placement.enlargement == 1 &&
                   layer->placement.area.Intersected(tile) == tile;
        };
        return m_shown.size() >= kDeepStack && m_shown.size() <= kStackRows && tile.Width() == kTile.width &&
               std::all_of(m_shown.begin(), m_shown.end(), fits);
    }

    void AddDeep(const Rect& rect)
    {
        if (m_deepCount == m_deep.size())
            m_deep.emplace_back();
        DeepTile& tile = m_deep[m_deepCount++];
        tile.rect = rect;
        tile.columns.clear();
        for (const PictureLayer* layer : m_shown) {
            const Placement& placement = layer->placement;
            tile.columns.push_back(
                {layer->pixels.Row(placement.SourceY(rect.top)) + ptrdiff_t{placement.SourceX(rect.left)} * 4,
                 layer->pixels.stride * placement.step, static_cast<size_t>(placement.step),
                 layer->transparency});
        }
    }

    void DrawDeep(const DeepTile& tile, int y)
    {
        for (size_t x = 0; x < size_t{kTile.width}; x += kStackPixels) {
            struct Piece {
                CBandPainter& painter;
                const DeepTile& tile;
                ptrdiff_t row;
                size_t x;
            } piece{*this, tile, y - tile.rect.top, x};
            const auto row = [](void* context, size_t index) {
                const Piece& at = *static_cast<const Piece*>(context);
                const Column& column = at.tile.columns[index];
                const uint8_t* pixels = column.corner + column.rowBytes * at.row + at.x * column.step * 4;
                if (column.step > 1) {
                    uint32_t* const gathered = at.painter.m_gathered[index].data();
                    SampleRow(pixels, kStackPixels, column.step, gathered, pixels + kSoonBytes);
                    pixels = reinterpret_cast<const uint8_t*>(gathered);
                }
                return StackedRow{pixels, column.transparency};
            };
            BlendStackWeighted(m_destination.Row(y) + (static_cast<size_t>(tile.rect.left) + x) * 4,
                               {row, &piece, tile.columns.size()});
        }
    }

    /// Short pieces of rows lie too far from each other for the processor to see the next ones coming.
    static void PrefetchLayer(const PictureLayer& layer, const Rect& rect)
    {
        const Placement& placement = layer.placement;
        const Rect area = placement.area.Intersected(rect);
        if (area.IsEmpty())
            return;
        const int left = placement.SourceX(area.left);
        const auto bytes = static_cast<size_t>(placement.SourceX(area.right - 1) + 1 - left) * 4;
        for (int y = area.top; y < area.bottom; ++y)
            Prefetch(layer.pixels.Row(placement.SourceY(y)) + ptrdiff_t{left} * 4, bytes);
    }

    void DrawLayer(const PictureLayer& layer, const Rect& rect)
    {
        const Rect area = layer.placement.area.Intersected(rect);
        if (area.IsEmpty())
            return;
        const int columns = layer.placement.IsPlain() ? area.Width() : GatheredRow::kMaxColumns;
        ForEachPart(area, {columns, area.Height()}, [&](const Rect& strip) {
            CLayerRows rows(layer, strip.left, strip.Width(), m_scratch);
            ForEachRow(m_destination, strip.top, strip.bottom, [&](int y) {
                layer.blend(m_destination.Row(y) + ptrdiff_t{strip.left} * 4, rows.Row(y),
                            static_cast<size_t>(strip.Width()), layer.transparency);
            });
        });
    }

    static constexpr ptrdiff_t kSoonBytes = 2048;
    static constexpr int kNarrow = 64;
    static constexpr size_t kLayersAhead = 2;

    const BitmapView& m_destination;
    std::vector<const PictureLayer*> m_inBand;
    std::vector<const PictureLayer*> m_inRow;
    std::vector<const PictureLayer*> m_shown; ///< in the tile, the topmost one first
    std::vector<const PictureLayer*> m_shownInRun;
    Rect m_run;                   ///< tiles beside each other that show the same few layers
    std::vector<DeepTile> m_deep; ///< the first m_deepCount are in use
    size_t m_deepCount = 0;
    GatheredRow m_scratch;
    std::array<std::array<uint32_t, kStackPixels>, kStackRows> m_gathered; ///< of the rows of a deep tile
};

} // namespace

void DrawLayers(const BitmapView& destination, std::span<const PictureLayer> layers)
{
    Rect bounds;
    int64_t pixels = 0;
    std::vector<const PictureLayer*> seen;
    seen.reserve(layers.size());
    for (const PictureLayer& layer : layers) {
        const Rect& area = layer.placement.area;
        if (area.IsEmpty())
            continue;
        seen.push_back(&layer);
        bounds = bounds.United(area);
        pixels += int64_t{std::max(area.Width(), kPixelsPerRow)} * area.Height() * layer.placement.step;
    }
    if (seen.empty())
        return;
    const int64_t bandRows = bounds.Height() * kPixelsPerBand / pixels + 1;
    const int tileRows = (bounds.Height() + kTile.height - 1) / kTile.height;
    ForRowBands(tileRows, static_cast<int>((bandRows + kTile.height - 1) / kTile.height),
                [&](int begin, int end) {
                    const Rect band{bounds.left, bounds.top + begin * kTile.height, bounds.right,
                                    std::min(bounds.bottom, bounds.top + end * kTile.height)};
                    CBandPainter(destination).Draw(band, seen);
                });
}
