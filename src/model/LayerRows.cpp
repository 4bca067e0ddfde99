// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerRows.h"

#include "model/SampleRow.h"
#include "platform/dib/Pixel.h"

#include <algorithm>

namespace {

constexpr ptrdiff_t kPixelBytes = 4;

/// Writes every pixel `times` times, in whole groups of `Group`; what is too much the next one overwrites.
template <int Group> void RepeatPixels(const uint8_t* from, int count, int times, uint32_t* to)
{
    for (int i = 0; i < count; ++i, to += times, from += kPixelBytes)
        std::fill_n(to, Group, LoadPixel(from));
}

} // namespace

void CLayerRows::Gather(const uint8_t* source)
{
    const int times = m_placement.enlargement;
    if (times == 1) {
        // The next row lies as far from this one as this from the last; a single row goes on to the right.
        constexpr ptrdiff_t kFurtherRight = 2048;
        const ptrdiff_t ahead = m_lastSource != nullptr ? source - m_lastSource : kFurtherRight;
        m_lastSource = source;
        SampleRow(source, static_cast<size_t>(m_width), static_cast<size_t>(m_placement.step), m_gathered,
                  source + ahead);
        return;
    }
    const int count = (m_phase + m_width + times - 1) / times;
    const auto repeat = times == 2 ? RepeatPixels<2> : times <= 4 ? RepeatPixels<4> : RepeatPixels<8>;
    repeat(source, count, times, m_gathered);
}
