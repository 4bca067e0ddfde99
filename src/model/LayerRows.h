// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/LayerStack.h"

#include <array>
#include <cstdint>

/// Hands out the rows of a layer as they show in some destination columns, one pixel per destination pixel.
/// An enlarged or reduced row is gathered once and kept for the rows that show it again.
class CLayerRows {
public:
    /// Most columns that one reader can take.
    static constexpr int kMaxColumns = 1024;

    /// left, width: destination columns within the layer's area.
    CLayerRows(const PictureLayer& layer, int left, int width);

    /// Destination row y, which must lie in the layer's area. Good until the next call.
    [[nodiscard]] const uint8_t* Row(int y);

private:
    static constexpr int kMaxZoom = 8;

    const PictureLayer& m_layer;
    int m_firstColumn; ///< the picture's column in the leftmost destination column
    int m_phase; ///< destination pixels that the leftmost column shows of m_firstColumn's neighbours' left
    int m_width;
    int m_gatheredRow = -1;
    alignas(64) std::array<uint32_t, kMaxColumns + 4 * kMaxZoom> m_gathered;
};
