// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerRows.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

uint32_t LoadPixel(const uint8_t* row, int x)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, row + ptrdiff_t{x} * 4, sizeof pixel);
    return pixel;
}

/// Writes every pixel `times` times, in whole groups of `Group`, the surplus of each overwritten by the next.
template <int Group> void RepeatPixels(const uint8_t* from, int count, int times, uint32_t* to)
{
    for (int i = 0; i < count; ++i, to += times)
        std::fill_n(to, Group, LoadPixel(from, i));
}

template <int Step> void TakeEvery(const uint8_t* from, int count, uint32_t* to)
{
    for (int i = 0; i < count; ++i)
        to[i] = LoadPixel(from, i * Step);
}

void TakeEvery(const uint8_t* from, int count, int step, uint32_t* to)
{
    constexpr std::array kSteps{TakeEvery<2>, TakeEvery<3>, TakeEvery<4>, TakeEvery<5>,
                                TakeEvery<6>, TakeEvery<7>, TakeEvery<8>};
    kSteps[static_cast<size_t>(step - 2)](from, count, to);
}

} // namespace

CLayerRows::CLayerRows(const PictureLayer& layer, int left, int width)
    : m_layer(layer), m_firstColumn(layer.placement.SourceX(left)),
      m_phase(static_cast<int>((left + layer.placement.offsetX) % layer.placement.enlargement)),
      m_width(width)
{
    assert(width <= kMaxColumns);
    assert(layer.placement.enlargement <= kMaxZoom && layer.placement.step <= kMaxZoom);
}

const uint8_t* CLayerRows::Row(int y)
{
    const Placement& placement = m_layer.placement;
    const int sourceRow = placement.SourceY(y);
    const uint8_t* source = m_layer.pixels.Row(sourceRow) + ptrdiff_t{m_firstColumn} * 4;
    const int times = placement.enlargement;
    if (times == 1 && placement.step == 1)
        return source;
    if (sourceRow != m_gatheredRow) {
        m_gatheredRow = sourceRow;
        const int repeated = (m_phase + m_width + times - 1) / times;
        if (times == 1)
            TakeEvery(source, m_width, placement.step, m_gathered.data());
        else if (times == 2)
            RepeatPixels<2>(source, repeated, times, m_gathered.data());
        else if (times <= 4)
            RepeatPixels<4>(source, repeated, times, m_gathered.data());
        else
            RepeatPixels<8>(source, repeated, times, m_gathered.data());
    }
    return reinterpret_cast<const uint8_t*>(m_gathered.data() + m_phase);
}
