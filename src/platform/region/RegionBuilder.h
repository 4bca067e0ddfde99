// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/memory/HeapBlock.h"
#include "platform/region/Region.h"

#include <cassert>
#include <cstddef>

/// Makes a region from runs of pixels that come row by row from the top, and left to right in a row. Rows of
/// the same columns become one band as they come, so the cost is one step a run and one block of memory.
class CRegionBuilder {
public:
    /// Reserves room for so many runs; IsEmpty() afterwards when memory runs out.
    explicit CRegionBuilder(size_t runs);

    [[nodiscard]] bool IsEmpty() const { return m_block.IsEmpty(); }
    /// Adds the pixels [left, right) of row y; runs that touch become one. At most as many as reserved.
    void AddRun(int y, int left, int right)
    {
        assert(left < right);
        if (m_count > m_row && m_rects[m_row].top != y)
            CloseRow();
        if (m_count > m_row && m_rects[m_count - 1].right == left) {
            m_rects[m_count - 1].right = right;
            return;
        }
        assert(m_count < m_room);
        m_rects[m_count++] = {left, y, right, y + 1};
    }
    /// The region of all runs; the builder is spent.
    [[nodiscard]] CRegion Finish();

private:
    void CloseRow();

    CHeapBlock m_block;
    Rect* m_rects = nullptr;
    size_t m_room = 0;
    size_t m_count = 0;
    size_t m_band = 0; ///< where the band above the current row begins
    size_t m_row = 0;  ///< where the current row begins
    int m_left = CRegion::kLimit;
    int m_right = -CRegion::kLimit;
};
