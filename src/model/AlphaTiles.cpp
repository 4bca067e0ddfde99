// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/AlphaTiles.h"

#include <algorithm>
#include <cassert>

namespace {

/// A range whose bounds contradict each other stands for an unknown tile.
constexpr uint16_t kUnknown = 0xFF00;

uint16_t Packed(AlphaRange range)
{
    return static_cast<uint16_t>(range.lowest << 8 | range.highest);
}

int TilesIn(int pixels)
{
    return (pixels + CAlphaTiles::kTile - 1) / CAlphaTiles::kTile;
}

} // namespace

void CAlphaTiles::Resize(Size picture)
{
    if (picture == m_picture)
        return;
    m_picture = picture;
    m_columns = TilesIn(picture.width);
    m_tiles = std::vector<std::atomic<uint16_t>>(static_cast<size_t>(m_columns) *
                                                 static_cast<size_t>(TilesIn(picture.height)));
    Forget(0, picture.height);
}

void CAlphaTiles::Forget(int top, int bottom)
{
    const int first = std::clamp(top, 0, m_picture.height) / kTile;
    const int end = TilesIn(std::clamp(bottom, 0, m_picture.height));
    m_knownRows = std::min(m_knownRows, first);
    for (int at = first * m_columns; at < end * m_columns; ++at)
        m_tiles[static_cast<size_t>(at)].store(kUnknown, std::memory_order_relaxed);
}

AlphaRange CAlphaTiles::OfTile(int column, int row, const ConstBitmapView& picture,
                               UnknownTiles unknown) const
{
    std::atomic<uint16_t>& tile = m_tiles[static_cast<size_t>(row * m_columns + column)];
    uint16_t packed = tile.load(std::memory_order_relaxed);
    if (packed == kUnknown) {
        if (unknown == UnknownTiles::Spare)
            return {};
        const Rect rect =
            Rect::At({column * kTile, row * kTile}, {kTile, kTile}).Intersected(Rect::At({0, 0}, m_picture));
        packed = Packed(FindAlphaRange(
            {picture.Row(rect.top) + ptrdiff_t{rect.left} * 4, picture.stride, rect.Width(), rect.Height()}));
        tile.store(packed, std::memory_order_relaxed); // whoever else looks finds the same
    }
    return {static_cast<uint8_t>(packed >> 8), static_cast<uint8_t>(packed & 0xFF)};
}

AlphaRange CAlphaTiles::Within(const Rect& rect, const ConstBitmapView& picture, UnknownTiles unknown) const
{
    assert(picture.Extent() == m_picture && !rect.IsEmpty());
    AlphaRange all{255, 0};
    for (int row = rect.top / kTile; row * kTile < rect.bottom; ++row) {
        for (int column = rect.left / kTile; column * kTile < rect.right; ++column) {
            all = all.United(OfTile(column, row, picture, unknown));
            if (all == AlphaRange())
                return all;
        }
    }
    return all;
}

bool CAlphaTiles::FindMore(const ConstBitmapView& picture, std::chrono::steady_clock::time_point until)
{
    Resize(picture.Extent());
    for (const int rows = TilesIn(m_picture.height); m_knownRows < rows; ++m_knownRows) {
        if (std::chrono::steady_clock::now() >= until)
            return true;
        for (int column = 0; column < m_columns; ++column)
            static_cast<void>(OfTile(column, m_knownRows, picture, UnknownTiles::Find));
    }
    return false;
}
