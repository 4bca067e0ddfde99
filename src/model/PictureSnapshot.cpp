// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PictureSnapshot.h"

#include "model/RasterImage.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

constexpr size_t kPixelBytes = sizeof(uint32_t);
constexpr size_t kTileRowBytes = CPictureSnapshot::kTileWidth * kPixelBytes;
constexpr size_t kTileBytes = kTileRowBytes * CPictureSnapshot::kTileHeight;

int DivideUp(int value, int divisor)
{
    return value / divisor + (value % divisor != 0 ? 1 : 0);
}

} // namespace

/// Tiles that were copied together, so that memory is asked for once.
class CPictureSnapshot::CTiles final : public CSharedObj {
public:
    explicit CTiles(size_t count)
        : m_block(CHeapBlock::Allocate(count * kTileBytes, 0, BlockContent::Undefined))
    {
    }
    [[nodiscard]] bool HasMemory() const { return !m_block.IsEmpty(); }
    /// Copies the tile at a corner, which must be inside; what lies outside the picture stays undefined.
    const uint32_t* Copy(const ConstBitmapView& picture, Point corner)
    {
        uint8_t* const tile = m_block.Data() + kTileBytes * m_used++;
        const int rows = std::min(kTileHeight, picture.height - corner.y);
        const auto bytes = static_cast<size_t>(std::min(kTileWidth, picture.width - corner.x)) * kPixelBytes;
        for (int y = 0; y < rows; ++y)
            std::memcpy(tile + static_cast<size_t>(y) * kTileRowBytes,
                        picture.Row(corner.y + y) + static_cast<size_t>(corner.x) * kPixelBytes, bytes);
        return reinterpret_cast<const uint32_t*>(tile);
    }

private:
    CHeapBlock m_block;
    size_t m_used = 0;
};

CPictureSnapshot::CPictureSnapshot(Ref<CRasterImage> image, size_t mostAtOnce)
    : m_image(std::move(image)),
      m_picture(m_image->m_dib.Share()), m_size{m_image->Width(), m_image->Height()},
      m_mostAtOnce(mostAtOnce), m_columns(DivideUp(m_size.width, kTileWidth)),
      m_tiles(static_cast<size_t>(m_columns) * static_cast<size_t>(DivideUp(m_size.height, kTileHeight))),
      m_row(static_cast<size_t>(m_size.width))
{
    m_image->AddSnapshot(this);
}

CPictureSnapshot::~CPictureSnapshot()
{
    m_image->RemoveSnapshot(this);
}

Rect CPictureSnapshot::Touched(const Rect& rect) const
{
    const Rect part = rect.Intersected({0, m_first, m_size.width, m_size.height});
    if (part.IsEmpty())
        return {};
    return {part.left / kTileWidth, part.top / kTileHeight, DivideUp(part.right, kTileWidth),
            DivideUp(part.bottom, kTileHeight)};
}

bool CPictureSnapshot::IsTooMuch(const Rect& tiles) const
{
    size_t missing = 0;
    for (int row = tiles.top; row < tiles.bottom; ++row)
        for (int column = tiles.left; column < tiles.right; ++column)
            missing += m_tiles[Index(column, row)].pixels == nullptr ? 1 : 0;
    return missing > m_mostAtOnce / kTileBytes;
}

bool CPictureSnapshot::Lacks(int column, int row) const
{
    return m_isIntact && column < m_columns && row >= m_first / kTileHeight &&
           Index(column, row) < m_tiles.size() && m_tiles[Index(column, row)].pixels == nullptr;
}

void CPictureSnapshot::CopyTiles(std::span<CPictureSnapshot* const> snapshots, const CPackedDib& picture,
                                 const Rect& rect)
{
    Rect all;
    for (CPictureSnapshot* snapshot : snapshots) {
        if (!snapshot->Reads(picture))
            continue;
        const Rect tiles = snapshot->Touched(rect);
        if (snapshot->IsTooMuch(tiles))
            snapshot->m_isIntact = false;
        else
            all = all.United(tiles);
    }
    const auto forEachLacking = [&](auto visit) {
        for (int row = all.top; row < all.bottom; ++row) {
            for (int column = all.left; column < all.right; ++column) {
                const auto lacks = [&](const CPictureSnapshot* each) {
                    return each->Reads(picture) && each->Lacks(column, row);
                };
                if (std::ranges::any_of(snapshots, lacks))
                    visit(column, row, lacks);
            }
        }
    };
    size_t count = 0;
    forEachLacking([&](int, int, const auto&) { ++count; });
    if (count == 0)
        return;
    const Ref<CTiles> copies(new (std::nothrow) CTiles(count));
    const bool hasMemory = copies && copies->HasMemory();
    const ConstBitmapView pixels = ViewOf(picture);
    forEachLacking([&](int column, int row, const auto& lacks) {
        // Who lacks a tile has seen no change of it, so one copy is right for all of them.
        const uint32_t* const copy =
            hasMemory ? copies->Copy(pixels, {column * kTileWidth, row * kTileHeight}) : nullptr;
        for (CPictureSnapshot* snapshot : snapshots) {
            if (!lacks(snapshot))
                continue;
            snapshot->m_isIntact = hasMemory;
            if (hasMemory)
                snapshot->m_copied = snapshot->m_copied.United(Rect::At({column, row}, {1, 1}));
            snapshot->m_tiles[snapshot->Index(column, row)] = {hasMemory ? copies : nullptr, copy};
        }
    });
}

void CPictureSnapshot::ForEachCopied(
    int y, const std::function<void(int x, std::span<const uint32_t> pixels)>& visit)
{
    int begin = 0;
    int end = 0;
    const auto hand = [&] {
        if (begin < end)
            visit(begin,
                  std::span(m_row).subspan(static_cast<size_t>(begin), static_cast<size_t>(end - begin)));
    };
    const int row = y / kTileHeight;
    if (row < m_copied.top || row >= m_copied.bottom)
        return;
    for (int column = m_copied.left; column < m_copied.right; ++column) {
        const uint32_t* const tile = m_tiles[Index(column, row)].pixels;
        const int x = column * kTileWidth;
        if (tile == nullptr)
            continue;
        if (x != end) {
            hand();
            begin = x;
        }
        end = std::min(x + kTileWidth, m_size.width);
        std::memcpy(m_row.data() + x, tile + ptrdiff_t{y % kTileHeight} * kTileWidth,
                    static_cast<size_t>(end - x) * kPixelBytes);
    }
    hand();
}

const uint32_t* CPictureSnapshot::Row(int y)
{
    const auto* row = reinterpret_cast<const uint32_t*>(m_picture.Row(y));
    if (!HasTiles())
        return row;
    size_t copied = 0;
    ForEachCopied(y, [&](int, std::span<const uint32_t> pixels) { copied += pixels.size(); });
    if (copied == 0)
        return row;
    if (copied < m_row.size()) {
        // The stretches in which the picture is as it was.
        int x = 0;
        const auto take = [&](int to) {
            std::memcpy(m_row.data() + x, row + x, static_cast<size_t>(to - x) * kPixelBytes);
        };
        ForEachCopied(y, [&](int begin, std::span<const uint32_t> pixels) {
            take(begin);
            x = begin + static_cast<int>(pixels.size());
        });
        take(m_size.width);
    }
    return m_row.data();
}
