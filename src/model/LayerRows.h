// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/LayerStack.h"

#include <array>
#include <cassert>
#include <cstdint>

/// Room for one enlarged or reduced row.
struct GatheredRow {
    /// Most columns that a reader can take of an enlarged or reduced layer: as many as most windows have, so
    /// that destination rows follow each other in memory.
    static constexpr int kMaxColumns = 2048;
    static constexpr int kMaxZoom = 8;
    alignas(64) std::array<uint32_t, kMaxColumns + 4 * kMaxZoom> pixels;
};

/// Hands out the rows of a layer as they show in some destination columns, one pixel per destination pixel.
/// An enlarged or reduced row is gathered once and kept for the rows that show it again.
class CLayerRows {
public:
    /// left, width: destination columns within the layer's area. scratch: this reader's alone while it lives.
    CLayerRows(const PictureLayer& layer, int left, int width, GatheredRow& scratch)
        : m_placement(layer.placement),
          m_topLeft(layer.pixels.top + ptrdiff_t{m_placement.SourceX(left)} * 4),
          m_stride(layer.pixels.stride), m_width(width), m_gathered(scratch.pixels.data())
    {
        assert(width <= GatheredRow::kMaxColumns || m_placement.IsPlain());
        assert(m_placement.enlargement <= GatheredRow::kMaxZoom && m_placement.step <= GatheredRow::kMaxZoom);
        if (m_placement.enlargement > 1)
            m_phase = static_cast<int>((left + m_placement.offsetX) % m_placement.enlargement);
    }

    /// Destination row y, which must lie in the layer's area. Good until the next call.
    [[nodiscard]] const uint8_t* Row(int y)
    {
        const int row = m_placement.SourceY(y);
        const uint8_t* source = m_topLeft + m_stride * row;
        if (m_placement.IsPlain())
            return source;
        if (row != m_gatheredRow) {
            Gather(source);
            m_gatheredRow = row;
        }
        return reinterpret_cast<const uint8_t*>(m_gathered + m_phase);
    }

private:
    void Gather(const uint8_t* source);

    const Placement& m_placement;
    const uint8_t* m_topLeft; ///< the top pixel of the picture's column in the leftmost destination column
    ptrdiff_t m_stride;
    int m_width;
    int m_phase = 0; ///< how much of an enlarged pixel lies left of the leftmost destination column
    int m_gatheredRow = -1;
    const uint8_t* m_lastSource = nullptr;
    uint32_t* m_gathered;
};
