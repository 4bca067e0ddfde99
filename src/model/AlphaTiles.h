// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AlphaRange.h"
#include "platform/geometry/Geometry.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <vector>

/// What to do about tiles that nobody has looked at.
enum class UnknownTiles {
    Find,  ///< look at them
    Spare, ///< they may hold anything
};

/// The alphas of a 32-bit picture tile by tile, found out when they are asked for and kept until the pixels
/// change. Costs two bytes for each 256 pixels.
class CAlphaTiles {
public:
    static constexpr int kTile = 16; ///< pixels, both ways

    /// Gets ready for a picture of a size. Nothing is known when it was ready for another.
    void Resize(Size picture);
    /// Pixels of some rows, counted from the top, may be others from now on.
    void Forget(int top, int bottom);
    /// Bounds of the alphas in a rectangle of the picture, which is not empty; some may lie around it.
    /// Several threads may ask at once.
    [[nodiscard]] AlphaRange Within(const Rect& rect, const ConstBitmapView& picture,
                                    UnknownTiles unknown) const;
    /// Looks at unknown tiles until a point in time; false when there are none.
    bool FindMore(const ConstBitmapView& picture, std::chrono::steady_clock::time_point until);

private:
    [[nodiscard]] AlphaRange OfTile(int column, int row, const ConstBitmapView& picture,
                                    UnknownTiles unknown) const;

    Size m_picture;
    int m_columns = 0;
    int m_knownRows = 0; ///< of tiles, from the top, that FindMore has been through
    mutable std::vector<std::atomic<uint16_t>> m_tiles;
};
