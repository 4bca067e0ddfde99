// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/RegionBuilder.h"

#include <pixman.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace {

constexpr size_t kHeaderBytes = sizeof(pixman_region32_data_t);

bool SameColumns(const Rect& a, const Rect& b)
{
    return a.left == b.left && a.right == b.right;
}

} // namespace

CRegionBuilder::CRegionBuilder(size_t runs)
    : m_block(runs < SIZE_MAX / sizeof(Rect) - kHeaderBytes
                  ? CHeapBlock::Allocate(kHeaderBytes + runs * sizeof(Rect), 0, BlockContent::Undefined)
                  : CHeapBlock()),
      m_room(runs)
{
    if (!m_block.IsEmpty())
        m_rects = reinterpret_cast<Rect*>(m_block.Data() + kHeaderBytes);
}

void CRegionBuilder::CloseRow()
{
    m_left = std::min(m_left, m_rects[m_row].left);
    m_right = std::max(m_right, m_rects[m_count - 1].right);
    const Rect* const band = m_rects + m_band;
    const Rect* const row = m_rects + m_row;
    const size_t inRow = m_count - m_row;
    if (m_row - m_band == inRow && band->bottom == row->top && std::equal(band, row, row, SameColumns)) {
        for (size_t i = m_band; i < m_row; ++i)
            ++m_rects[i].bottom;
        m_count = m_row;
    } else {
        m_band = m_row;
        m_row = m_count;
    }
}

CRegion CRegionBuilder::Finish()
{
    if (m_count > m_row)
        CloseRow();
    CRegion region;
    if (m_count == 0)
        return region;
    region.m_bounds = {m_left, m_rects[0].top, m_right, m_rects[m_count - 1].bottom};
    if (m_count == 1)
        return region;
    const size_t used = kHeaderBytes + m_count * sizeof(Rect);
    if (used < m_block.Size() / 2) {
        // Rows that became one band need not keep their memory as long as the region lives.
        if (CHeapBlock smaller = CHeapBlock::Allocate(used, 0, BlockContent::Undefined); !smaller.IsEmpty()) {
            std::memcpy(smaller.Data(), m_block.Data(), used);
            m_block = std::move(smaller);
        }
    }
    const pixman_region32_data_t header{static_cast<long>(m_count), static_cast<long>(m_count)};
    std::memcpy(m_block.Data(), &header, kHeaderBytes);
    auto block = std::make_shared<CHeapBlock>(std::move(m_block));
    const auto* data = reinterpret_cast<const pixman_region32_data_t*>(block->Data());
    region.m_data = std::shared_ptr<const CRegion::Data>(std::move(block), data);
    return region;
}
