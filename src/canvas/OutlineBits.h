// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/geometry/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

/// The pixels of a client rectangle that an outline covers, one bit each; none at first.
class COutlineBits {
public:
    /// Pixels along a row or a column after which the dashes repeat: as many black ones as white ones.
    static constexpr int kPeriod = 8;

    COutlineBits() = default;
    /// area: its left edge at 0.
    explicit COutlineBits(const Rect& area);

    [[nodiscard]] const Rect& Area() const { return m_area; }
    /// Covers [from, to) of a row or a column, as far as it lies in the area.
    void AddRow(int64_t y, int64_t from, int64_t to);
    void AddColumn(int64_t x, int64_t from, int64_t to);
    /// Draws dashes on the covered pixels; `target` shows the client rectangle `area`.
    void Paint(const BitmapView& target, const Rect& area, int phase) const;
    /// Calls visit for rectangles that hold every covered pixel, left to right, none touching another.
    void VisitCovered(const std::function<void(const Rect&)>& visit) const;

private:
    [[nodiscard]] std::span<uint64_t> Row(int y)
    {
        return std::span(m_words).subspan(static_cast<size_t>(y - m_area.top) * m_wordsPerRow, m_wordsPerRow);
    }

    Rect m_area;
    size_t m_wordsPerRow = 0;
    std::vector<uint64_t> m_words; ///< row by row; the lowest bit is the leftmost pixel
};
