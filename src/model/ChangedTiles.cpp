// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ChangedTiles.h"

#include <algorithm>
#include <bit>
#include <cassert>

CChangedTiles::CChangedTiles(Size picture)
    : m_picture(picture),
      m_edge(std::max(kLeastEdge, (std::max(picture.width, picture.height) + kMost - 1) / kMost))
{
}

void CChangedTiles::Add(size_t first, size_t pixels)
{
    const auto width = static_cast<size_t>(m_picture.width);
    while (pixels > 0) {
        const size_t x = first % width;
        const size_t inRow = std::min(pixels, width - x);
        const int y = m_picture.height - 1 - static_cast<int>(first / width);
        assert(y >= 0);
        const int left = static_cast<int>(x) / m_edge;
        const int right = static_cast<int>(x + inRow - 1) / m_edge;
        m_rows[static_cast<size_t>(y / m_edge)] |= ~uint64_t{0} >> (kMost - 1 - (right - left)) << left;
        first += inRow;
        pixels -= inRow;
    }
}

std::vector<Rect> CChangedTiles::Rectangles() const
{
    std::vector<Rect> rectangles;
    for (int top = 0; top < kMost;) {
        uint64_t bits = m_rows[static_cast<size_t>(top)];
        int bottom = top + 1;
        while (bottom < kMost && m_rows[static_cast<size_t>(bottom)] == bits)
            ++bottom;
        while (bits != 0) {
            const int left = std::countr_zero(bits);
            const int right = left + std::countr_one(bits >> left);
            rectangles.push_back(
                Rect{left * m_edge, top * m_edge, right * m_edge, bottom * m_edge}.Intersected(
                    Rect::At({0, 0}, m_picture)));
            bits = right == kMost ? 0 : bits >> right << right;
        }
        top = bottom;
    }
    return rectangles;
}
