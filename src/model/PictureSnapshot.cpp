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

/// The pixels of a tile; what lies outside the picture is undefined.
class CPictureSnapshot::CTile final : public CSharedObj {
public:
    /// None when memory runs out.
    static Ref<CTile> Copy(const ConstBitmapView& picture, Point corner)
    {
        Ref<CTile> tile(new (std::nothrow) CTile);
        if (!tile || tile->m_block.IsEmpty())
            return nullptr;
        const int rows = std::min(kTileHeight, picture.height - corner.y);
        const auto bytes = static_cast<size_t>(std::min(kTileWidth, picture.width - corner.x)) * kPixelBytes;
        for (int y = 0; y < rows; ++y)
            std::memcpy(tile->m_block.Data() + static_cast<size_t>(y) * kTileRowBytes,
                        picture.Row(corner.y + y) + static_cast<size_t>(corner.x) * kPixelBytes, bytes);
        return tile;
    }
    [[nodiscard]] const uint32_t* Row(int y) const
    {
        return reinterpret_cast<const uint32_t*>(m_block.Data() + static_cast<size_t>(y) * kTileRowBytes);
    }

private:
    CTile() = default;

    CHeapBlock m_block = CHeapBlock::Allocate(kTileBytes, 0, BlockContent::Undefined);
};

CPictureSnapshot::CPictureSnapshot(Ref<CRasterImage> image, size_t mostAtOnce)
    : m_image(std::move(image)), m_size{m_image->Width(), m_image->Height()}, m_mostAtOnce(mostAtOnce),
      m_columns(DivideUp(m_size.width, kTileWidth)),
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
            missing += m_tiles[Index(column, row)] ? 0 : 1;
    return missing > m_mostAtOnce / kTileBytes;
}

bool CPictureSnapshot::Lacks(int column, int row) const
{
    return m_isIntact && column < m_columns && row >= m_first / kTileHeight &&
           Index(column, row) < m_tiles.size() && !m_tiles[Index(column, row)];
}

void CPictureSnapshot::CopyTiles(std::span<CPictureSnapshot* const> snapshots, const ConstBitmapView& picture,
                                 const Rect& rect)
{
    Rect all;
    for (CPictureSnapshot* snapshot : snapshots) {
        const Rect tiles = snapshot->Touched(rect);
        if (snapshot->IsTooMuch(tiles))
            snapshot->m_isIntact = false;
        else
            all = all.United(tiles);
    }
    for (int row = all.top; row < all.bottom; ++row) {
        for (int column = all.left; column < all.right; ++column) {
            // Who lacks a tile has seen no change of it, so one copy is right for all of them.
            Ref<CTile> copy;
            for (CPictureSnapshot* snapshot : snapshots) {
                if (!snapshot->Lacks(column, row))
                    continue;
                if (!copy)
                    copy = CTile::Copy(picture, {column * kTileWidth, row * kTileHeight});
                snapshot->m_tiles[snapshot->Index(column, row)] = copy;
                (copy ? snapshot->m_hasTiles : snapshot->m_isIntact) = static_cast<bool>(copy);
            }
        }
    }
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
    for (int column = 0; column < m_columns; ++column) {
        const Ref<CTile>& tile = m_tiles[Index(column, y / kTileHeight)];
        const int x = column * kTileWidth;
        if (!tile)
            continue;
        if (x != end) {
            hand();
            begin = x;
        }
        end = std::min(x + kTileWidth, m_size.width);
        std::memcpy(m_row.data() + x, tile->Row(y % kTileHeight), static_cast<size_t>(end - x) * kPixelBytes);
    }
    hand();
}

const uint32_t* CPictureSnapshot::Row(int y)
{
    // What has been copied is put over the picture's row, which may be another picture's once all has been.
    const CPackedDib& shown = m_image->Dib();
    const auto* row = m_image->Height() == m_size.height && m_image->Width() == m_size.width
                          ? reinterpret_cast<const uint32_t*>(shown.Row(y))
                          : nullptr;
    if (!m_hasTiles)
        return row;
    size_t copied = 0;
    ForEachCopied(y, [&](int, std::span<const uint32_t> pixels) { copied += pixels.size(); });
    if (copied == 0)
        return row;
    if (copied < m_row.size() && row != nullptr) {
        // The stretches that are the picture's own.
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
