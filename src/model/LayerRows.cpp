// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerRows.h"

#include "platform/dib/Pixel.h"

#include <hwy/cache_control.h>

#include <algorithm>

namespace {

constexpr ptrdiff_t kPixelBytes = 4;

/// Writes every pixel `times` times, in whole groups of `Group`; what is too much the next one overwrites.
template <int Group> void RepeatPixels(const uint8_t* from, int count, int times, uint32_t* to)
{
    for (int i = 0; i < count; ++i, to += times, from += kPixelBytes)
        std::fill_n(to, Group, LoadPixel(from));
}

/// Takes every `Step`th pixel.
template <int Step> void SamplePixels(const uint8_t* from, int count, uint32_t* to)
{
    constexpr ptrdiff_t kLine = 64;
    constexpr ptrdiff_t kAhead = 2048;
    constexpr int kGroup = 16;
    for (; count >= kGroup; count -= kGroup) {
        for (int line = 0; line < Step; ++line)
            hwy::Prefetch(from + kAhead + line * kLine);
        for (int i = 0; i < kGroup; ++i)
            to[i] = LoadPixel(from + i * Step * kPixelBytes);
        to += kGroup;
        from += kGroup * Step * kPixelBytes;
    }
    for (int i = 0; i < count; ++i)
        to[i] = LoadPixel(from + i * Step * kPixelBytes);
}

} // namespace

void CLayerRows::Gather(const uint8_t* source)
{
    const int times = m_placement.enlargement;
    if (times == 1) {
        constexpr std::array kSample{SamplePixels<2>, SamplePixels<3>, SamplePixels<4>, SamplePixels<5>,
                                     SamplePixels<6>, SamplePixels<7>, SamplePixels<8>};
        kSample[static_cast<size_t>(m_placement.step - 2)](source, m_width, m_gathered);
        return;
    }
    const int count = (m_phase + m_width + times - 1) / times;
    const auto repeat = times == 2 ? RepeatPixels<2> : times <= 4 ? RepeatPixels<4> : RepeatPixels<8>;
    repeat(source, count, times, m_gathered);
}
