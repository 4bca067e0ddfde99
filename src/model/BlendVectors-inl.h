// SPDX-License-Identifier: GPL-3.0-or-later

// Included once for every set of vector instructions but the scalar one, after hwy/highway.h.
#if defined(PIXOLUNE_BLEND_VECTORS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXOLUNE_BLEND_VECTORS_INL_H
#undef PIXOLUNE_BLEND_VECTORS_INL_H
#else
#define PIXOLUNE_BLEND_VECTORS_INL_H
#endif

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

#if HWY_TARGET != HWY_SCALAR

namespace hn = hwy::HWY_NAMESPACE;

using Pixels = hn::ScalableTag<uint32_t>;
using Words = hn::RepartitionToNarrow<Pixels>;
using SignedWords = hn::RebindToSigned<Words>;
using Bytes = hn::RepartitionToNarrow<Words>;
using PixelVector = hn::Vec<Pixels>;
using WordVector = hn::Vec<Words>;

/// The alpha byte of every pixel in all four of its bytes.
HWY_INLINE PixelVector SpreadAlpha(PixelVector pixels)
{
    alignas(16) static constexpr uint8_t kAlphaBytes[16] = {3,  3,  3,  3,  7,  7,  7,  7,
                                                            11, 11, 11, 11, 15, 15, 15, 15};
    const auto order = hn::LoadDup128(Bytes(), kAlphaBytes);
    return hn::BitCast(Pixels(), hn::TableLookupBytes(hn::BitCast(Bytes(), pixels), order));
}

/// Subtracts from every alpha byte, not below 0. `less` has only alpha bytes.
HWY_INLINE PixelVector LessAlpha(PixelVector pixels, PixelVector less)
{
    return hn::BitCast(Pixels(), hn::SaturatedSub(hn::BitCast(Bytes(), pixels), hn::BitCast(Bytes(), less)));
}

/// Blue and red of every pixel as 16-bit numbers.
HWY_INLINE WordVector EvenBytes(PixelVector pixels)
{
    return hn::And(hn::BitCast(Words(), pixels), hn::Set(Words(), 0x00FF));
}

/// Green and alpha.
HWY_INLINE WordVector OddBytes(PixelVector pixels)
{
    return hn::ShiftRight<8>(hn::BitCast(Words(), pixels));
}

HWY_INLINE PixelVector JoinBytes(WordVector even, WordVector odd)
{
    return hn::BitCast(Pixels(), hn::Or(even, hn::ShiftLeft<8>(odd)));
}

/// Source pixels ready to be mixed onto others as BlendRowWeighted does.
class CWeightedPixels {
public:
    /// e: what is left of the alphas, in all bytes.
    HWY_INLINE CWeightedPixels(PixelVector above, PixelVector e) : m_above(above), m_e(e)
    {
        // e * 32768 / 255 is e * 257 / 2 below 255, and e twice in 16 bits is e * 257.
        const auto weight = hn::ShiftRight<1>(hn::BitCast(Words(), e));
        m_rest = hn::Sub(hn::Set(Words(), 0x8000), weight);
        m_even = hn::MulHigh(EvenBytes(above), weight);
        m_odd = hn::MulHigh(OddBytes(above), weight);
    }
    HWY_INLINE PixelVector Onto(PixelVector below) const
    {
        const auto half =
            hn::BitCast(Bytes(), JoinBytes(hn::Add(m_even, hn::MulHigh(EvenBytes(below), m_rest)),
                                           hn::Add(m_odd, hn::MulHigh(OddBytes(below), m_rest))));
        const auto mixed = hn::BitCast(Pixels(), hn::Add(half, half));
        const auto opaque = hn::Eq(m_e, hn::Set(Pixels(), 0xFFFFFFFFu));
        const auto clear = hn::Eq(m_e, hn::Zero(Pixels()));
        return hn::IfThenElse(opaque, m_above, hn::IfThenElse(clear, below, mixed));
    }

private:
    PixelVector m_above;
    PixelVector m_e;
    WordVector m_rest;
    WordVector m_even;
    WordVector m_odd;
};

#endif

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#endif
