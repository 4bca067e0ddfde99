// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Where a 32-bit picture has changed, in square tiles: at most kMost of them along an edge, none smaller
/// than kLeastEdge pixels.
class CChangedTiles {
public:
    static constexpr int kMost = 64;
    static constexpr int kLeastEdge = 64;

    CChangedTiles() = default;
    explicit CChangedTiles(Size picture);

    /// Some pixels, counted as they are stored, from the bottom row up. They must lie in the picture.
    void Add(size_t first, size_t pixels);
    /// Rectangles of pixels that cover what was added and do not overlap.
    [[nodiscard]] std::vector<Rect> Rectangles() const;

private:
    Size m_picture;
    int m_edge = kLeastEdge;
    std::array<uint64_t, kMost> m_rows{}; ///< from the top, a bit for each tile
};
