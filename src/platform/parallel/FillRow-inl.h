// SPDX-License-Identifier: GPL-3.0-or-later

// Included once for every set of vector instructions, after hwy/highway.h.
#if defined(PIXOLUNE_FILL_ROW_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXOLUNE_FILL_ROW_INL_H
#undef PIXOLUNE_FILL_ROW_INL_H
#else
#define PIXOLUNE_FILL_ROW_INL_H
#endif

#include "platform/memory/Prefetch.h"
#include "platform/parallel/PictureBands.h"

#include <algorithm>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Fills a row with what `make(tag, x)` returns: the pixels x, x + 1, ... of the row, as many as the tag has
/// lanes. The tag is `words` or, where a whole vector does not fit, one of a single lane.
template <class D, class Make> HWY_INLINE void FillRow(D words, const ResultRow& row, const Make& make)
{
    const hn::CappedTag<uint32_t, 1> single;
    const size_t lanes = hn::Lanes(words);
    uint32_t* HWY_RESTRICT const pixels = row.pixels;
    const size_t count = row.count;
    size_t x = 0;
    const auto fillSingly = [&](size_t end) HWY_ATTR {
        for (; x < end; ++x)
            hn::StoreU(make(single, x), single, pixels + x);
    };
    // Less than 16 bytes cannot be streamed, and only to addresses that are multiples of the vector.
    const size_t vectorBytes = lanes * sizeof(uint32_t);
    const bool isStreamed = row.stores == RowStores::Streamed && vectorBytes >= 16;
    if (isStreamed) {
        const size_t beyond = reinterpret_cast<uintptr_t>(pixels) % vectorBytes;
        fillSingly(std::min(count, (vectorBytes - beyond) % vectorBytes / sizeof(uint32_t)));
    }
    // One call in one place, so that it is not left as a call.
    for (; x + lanes <= count; x += lanes) {
        const auto made = make(words, x);
        if (isStreamed)
            hn::Stream(made, words, pixels + x);
        else
            hn::StoreU(made, words, pixels + x);
    }
    fillSingly(count);
}

/// The same from the pixels of a source row, which `make(pixels, tag, x)` gets at hand.
template <class D, class Make>
HWY_INLINE void FillRowFrom(const uint32_t* HWY_RESTRICT source, D words, const ResultRow& row,
                            const Make& make)
{
    FillRow(words, row, [&](auto tag, size_t x) HWY_ATTR {
        PrefetchBehind(reinterpret_cast<const uint8_t*>(source + x), hn::Lanes(tag) * sizeof(uint32_t));
        return make(hn::LoadU(tag, source + x), tag, x);
    });
}

/// Writes pixels that were made aside to the row's columns from `first` on.
HWY_INLINE void StorePixels(const uint32_t* HWY_RESTRICT pixels, const ResultRow& row, size_t first,
                            size_t count)
{
    FillRowFrom(pixels, hn::ScalableTag<uint32_t>(), {row.y, row.pixels + first, count, row.stores},
                [](auto pixel, auto /*words*/, size_t) HWY_ATTR { return pixel; });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#endif
