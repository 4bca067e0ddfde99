// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/memory/SharedObj.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

class CRasterImage;

/// A picture as it was when this was made. It shares the picture's memory, so that it costs nothing when the
/// record comes to show another picture; where that memory is painted into, tiles are copied just before they
/// change, once for all snapshots that have not got them.
class CPictureSnapshot {
public:
    static constexpr int kTileWidth = 64;
    static constexpr int kTileHeight = 16;

    /// mostAtOnce: bytes; a change that would have more copied makes the snapshot worthless instead.
    explicit CPictureSnapshot(Ref<CRasterImage> image, size_t mostAtOnce = SIZE_MAX);
    ~CPictureSnapshot();
    CPictureSnapshot(const CPictureSnapshot&) = delete;
    CPictureSnapshot& operator=(const CPictureSnapshot&) = delete;

    [[nodiscard]] const Ref<CRasterImage>& Image() const { return m_image; }
    [[nodiscard]] Size PictureSize() const { return m_size; }
    /// Whether it would read the pixels of `picture`.
    [[nodiscard]] bool Reads(const CPackedDib& picture) const
    {
        return picture.Block().data() == m_picture.Block().data();
    }
    /// False once a tile has changed that was not copied: memory ran out, or there was too much at once.
    [[nodiscard]] bool IsIntact() const { return m_isIntact; }
    /// Whether tiles have been copied.
    [[nodiscard]] bool HasTiles() const { return !m_copied.IsEmpty(); }
    /// Around all that has been copied, in pixels.
    [[nodiscard]] Rect CopiedBounds() const
    {
        return Rect{m_copied.left * kTileWidth, m_copied.top * kTileHeight, m_copied.right * kTileWidth,
                    m_copied.bottom * kTileHeight}
            .Intersected(Rect::At({0, 0}, m_size));
    }
    /// Rows above `y` will not be asked for again.
    void ForgetAbove(int y) { m_first = y; }

    /// The pixels of row y, from the top, as they were; they stay until the next call or change.
    [[nodiscard]] const uint32_t* Row(int y);
    /// Calls visit(x, pixels) from left to right for the stretches of row y that have been copied.
    void ForEachCopied(int y, const std::function<void(int x, std::span<const uint32_t> pixels)>& visit);

    /// A rectangle of a picture is about to change: gives its tiles to those of the snapshots that read the
    /// picture and need them.
    static void CopyTiles(std::span<CPictureSnapshot* const> snapshots, const CPackedDib& picture,
                          const Rect& rect);

private:
    class CTiles;
    struct Tile {
        Ref<CTiles> owner;
        const uint32_t* pixels = nullptr; ///< none: as in the picture
    };

    [[nodiscard]] size_t Index(int column, int row) const
    {
        return static_cast<size_t>(row) * static_cast<size_t>(m_columns) + static_cast<size_t>(column);
    }
    /// The tiles that a rectangle touches, counted in tiles.
    [[nodiscard]] Rect Touched(const Rect& rect) const;
    [[nodiscard]] bool IsTooMuch(const Rect& tiles) const;
    [[nodiscard]] bool Lacks(int column, int row) const;

    Ref<CRasterImage> m_image;
    const CPackedDib m_picture;
    Size m_size;
    size_t m_mostAtOnce;
    int m_columns;
    int m_first = 0;
    bool m_isIntact = true;
    Rect m_copied; ///< around the tiles that have been copied, counted in tiles
    std::vector<Tile> m_tiles;
    std::vector<uint32_t> m_row;
};
