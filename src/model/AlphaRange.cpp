// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/AlphaRange.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "model/AlphaRange.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// For pictures at least as wide as a vector of the tag. The alpha is the high byte of a pixel, so that of
/// whole pixels the least and the greatest have the lowest and the highest one.
template <class D> HWY_INLINE AlphaRange FindIn(D pixels, const ConstBitmapView& view)
{
    const int lanes = static_cast<int>(hn::Lanes(pixels));
    auto least = hn::Set(pixels, 0xFFFFFFFFu);
    auto greatest = hn::Zero(pixels);
    for (int y = 0; y < view.height; ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(view.Row(y));
        const auto take = [&](int x) HWY_ATTR {
            const auto these = hn::LoadU(pixels, row + x);
            least = hn::Min(least, these);
            greatest = hn::Max(greatest, these);
        };
        for (int x = 0; x + lanes < view.width; x += lanes)
            take(x);
        take(view.width - lanes); // some of them again, if need be
    }
    return {static_cast<uint8_t>(hn::GetLane(hn::MinOfLanes(pixels, least)) >> 24),
            static_cast<uint8_t>(hn::GetLane(hn::MaxOfLanes(pixels, greatest)) >> 24)};
}

AlphaRange Find(const ConstBitmapView& view)
{
    const hn::CappedTag<uint32_t, 16> pixels;
    if (view.width >= static_cast<int>(hn::Lanes(pixels)))
        return FindIn(pixels, view);
    return FindIn(hn::CappedTag<uint32_t, 1>(), view);
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(Find);
} // namespace

AlphaRange FindAlphaRange(const ConstBitmapView& pixels)
{
    return HWY_DYNAMIC_DISPATCH(Find)(pixels);
}

#endif
