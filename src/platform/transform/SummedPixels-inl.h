// SPDX-License-Identifier: GPL-3.0-or-later

// Included once for every set of vector instructions, after hwy/highway.h.
#if defined(PIXOLUNE_SUMMED_PIXELS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXOLUNE_SUMMED_PIXELS_INL_H
#undef PIXOLUNE_SUMMED_PIXELS_INL_H
#else
#define PIXOLUNE_SUMMED_PIXELS_INL_H
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// A pixel of less is clear.
constexpr float kLeastAlpha = 0.5f;

/// The pixels whose colours times alpha and whose alphas add up to these, see Scale. words: the tag of the
/// pixels, floats of the sums.
template <class D, class V> HWY_INLINE hn::Vec<D> PixelsOfSums(D words, V blue, V green, V red, V alpha)
{
    const hn::Rebind<float, D> floats;
    const hn::Rebind<int32_t, D> integers;
    const auto inverse = hn::Div(hn::Set(floats, 1.0f), alpha);
    const auto levelOf = [&](auto value) HWY_ATTR {
        const auto clamped = hn::Min(hn::Max(value, hn::Zero(floats)), hn::Set(floats, 255.0f));
        return hn::BitCast(words, hn::ConvertTo(integers, hn::Add(clamped, hn::Set(floats, 0.5f))));
    };
    const auto blueAndGreen =
        hn::Or(levelOf(hn::Mul(blue, inverse)), hn::ShiftLeft<8>(levelOf(hn::Mul(green, inverse))));
    const auto redAndAlpha =
        hn::Or(hn::ShiftLeft<16>(levelOf(hn::Mul(red, inverse))), hn::ShiftLeft<24>(levelOf(alpha)));
    const auto isSeen = hn::Ge(alpha, hn::Set(floats, kLeastAlpha));
    return hn::IfThenElseZero(hn::RebindMask(words, isSeen), hn::Or(blueAndGreen, redAndAlpha));
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#endif
