// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/BlendRows.h"

#include "model/BlendPixels.h"
#include "platform/memory/Prefetch.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "model/BlendRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// After highway.h.
#include "model/BlendVectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

template <auto BlendPixel>
void BlendRow(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    for (; pixels > 0; --pixels, destination += 4, source += 4)
        BlendPixel(destination, source, source[3] - transparency);
}

void Weighted(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    BlendRow<BlendPixelWeighted>(destination, source, pixels, transparency);
}

void Over(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    BlendRow<BlendPixelOver>(destination, source, pixels, transparency);
}

void Copy(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    BlendRow<CopyPixelLessTransparency>(destination, source, pixels, transparency);
}

#else

/// x / 255 for x below 65535.
HWY_INLINE WordVector DivideBy255(WordVector x)
{
    return hn::ShiftRight<8>(hn::Add(hn::Add(x, hn::Set(Words(), 1)), hn::ShiftRight<8>(x)));
}

constexpr size_t kNarrowBytes = 64 * 4;

/// Calls `step(destination, source)` for a vector of pixels at a time; the last ones are copied into a
/// full vector and back.
template <typename Step>
HWY_INLINE void ForEachVector(uint8_t* HWY_RESTRICT destination, const uint8_t* HWY_RESTRICT source,
                              size_t pixels, const Step& step)
{
    const size_t bytesAtOnce = hn::Lanes(Bytes());
    const size_t bytes = pixels * 4;
    // What lies behind a narrow piece of a picture is not wanted next.
    const size_t ahead = bytes < kNarrowBytes ? 0 : kPrefetchBytes;
    size_t at = 0;
    for (; at + bytesAtOnce <= bytes; at += bytesAtOnce) {
        hwy::Prefetch(source + at + ahead);
        hwy::Prefetch(destination + at + ahead);
        step(reinterpret_cast<uint32_t*>(destination + at), reinterpret_cast<const uint32_t*>(source + at));
    }
    if (at == bytes)
        return;
    HWY_ALIGN uint32_t lastDestination[hn::MaxLanes(Pixels())] = {};
    HWY_ALIGN uint32_t lastSource[hn::MaxLanes(Pixels())] = {};
    std::memcpy(lastDestination, destination + at, bytes - at);
    std::memcpy(lastSource, source + at, bytes - at);
    step(lastDestination, lastSource);
    std::memcpy(destination + at, lastDestination, bytes - at);
}

void Weighted(uint8_t* HWY_RESTRICT destination, const uint8_t* HWY_RESTRICT source, size_t pixels,
              uint8_t transparency)
{
    const auto less = hn::Set(Pixels(), uint32_t{transparency} << 24);
    const auto none = hn::Zero(Pixels());
    const auto full = hn::Set(Pixels(), 0xFFFFFFFFu);
    ForEachVector(destination, source, pixels, [&](uint32_t* to, const uint32_t* from) HWY_ATTR {
        const auto above = hn::LoadU(Pixels(), from);
        const auto e = SpreadAlpha(LessAlpha(above, less));
        const auto clear = hn::Eq(e, none);
        if (hn::AllTrue(Pixels(), clear))
            return;
        const auto opaque = hn::Eq(e, full);
        if (hn::AllTrue(Pixels(), opaque)) {
            hn::StoreU(above, Pixels(), to);
            return;
        }
        hn::StoreU(CWeightedPixels(above, e).Onto(hn::LoadU(Pixels(), to)), Pixels(), to);
    });
}

/// sum / divisor for sums up to 255 * divisor; divisor: 1..255 in both halves of a pixel.
struct Divisor {
    WordVector divisor;
    WordVector reciprocal;

    HWY_INLINE explicit Divisor(PixelVector each)
    {
        // The quotient of 65535 is exact in single precision; what is cut off makes a result too small by
        // at most 1.
        const hn::RebindToFloat<Pixels> floats;
        const hn::RebindToSigned<Pixels> integers;
        const auto value = hn::ConvertTo(floats, hn::BitCast(integers, each));
        const auto quotient = hn::ConvertTo(integers, hn::Div(hn::Set(floats, 65535.0F), value));
        divisor = InBothHalves(each);
        reciprocal = InBothHalves(hn::BitCast(Pixels(), quotient));
    }

    HWY_INLINE WordVector Divide(WordVector sum) const
    {
        const auto quotient = hn::MulHigh(sum, reciprocal);
        const auto remainder = hn::Sub(sum, hn::Mul(quotient, divisor));
        const auto exact = hn::Gt(hn::BitCast(SignedWords(), divisor), hn::BitCast(SignedWords(), remainder));
        const auto lessOne = hn::BitCast(Words(), hn::VecFromMask(SignedWords(), exact));
        return hn::Add(quotient, hn::Add(hn::Set(Words(), 1), lessOne));
    }

    static HWY_INLINE WordVector InBothHalves(PixelVector value)
    {
        return hn::BitCast(Words(), hn::Or(value, hn::ShiftLeft<16>(value)));
    }
};

/// `source` with the alphas of `alpha`.
HWY_INLINE PixelVector WithAlpha(PixelVector source, PixelVector alpha)
{
    const auto alphaByte = hn::Set(Pixels(), 0xFF000000u);
    return hn::Or(hn::AndNot(alphaByte, source), hn::And(alphaByte, alpha));
}

/// Source over an opaque destination: the divisor is 255 everywhere.
HWY_INLINE PixelVector OverOpaque(PixelVector above, PixelVector below, WordVector s, WordVector rest)
{
    const auto mix = [&](WordVector a, WordVector b)
                         HWY_ATTR { return DivideBy255(hn::Add(hn::Mul(b, rest), hn::Mul(a, s))); };
    const auto mixed =
        JoinBytes(mix(EvenBytes(above), EvenBytes(below)), mix(OddBytes(above), OddBytes(below)));
    return WithAlpha(mixed, hn::Set(Pixels(), 0xFFFFFFFFu));
}

HWY_INLINE PixelVector OverAny(PixelVector above, PixelVector below, WordVector s, WordVector rest)
{
    // (255 - s) * D is split into a multiple of 255 and the rest, so that its product with a colour can be
    // divided by 255 in 16 bits.
    const auto share = hn::Mul(rest, OddBytes(SpreadAlpha(below)));
    const auto whole = DivideBy255(share);
    const auto part = hn::Sub(hn::Add(share, whole), hn::ShiftLeft<8>(whole));
    const auto roundedUp = hn::Min(part, hn::Set(Words(), 1));
    const auto alpha = hn::BitCast(Pixels(), hn::Add(hn::Add(s, whole), roundedUp));
    const auto alphaOnce = hn::And(alpha, hn::Set(Pixels(), 0xFF));
    const Divisor divisor(hn::Max(alphaOnce, hn::Set(Pixels(), 1)));
    const auto mix = [&](WordVector a, WordVector b) HWY_ATTR {
        const auto kept = hn::Add(hn::Mul(whole, b), DivideBy255(hn::Mul(part, b)));
        return divisor.Divide(hn::Add(kept, hn::Mul(s, a)));
    };
    const auto mixed =
        JoinBytes(mix(EvenBytes(above), EvenBytes(below)), mix(OddBytes(above), OddBytes(below)));
    return WithAlpha(mixed, hn::ShiftLeft<24>(alphaOnce));
}

void Over(uint8_t* HWY_RESTRICT destination, const uint8_t* HWY_RESTRICT source, size_t pixels,
          uint8_t transparency)
{
    const auto less = hn::Set(Pixels(), uint32_t{transparency} << 24);
    const auto none = hn::Zero(Pixels());
    const auto full = hn::Set(Pixels(), 0xFFFFFFFFu);
    ForEachVector(destination, source, pixels, [&](uint32_t* to, const uint32_t* from) HWY_ATTR {
        const auto above = hn::LoadU(Pixels(), from);
        const auto e = SpreadAlpha(LessAlpha(above, less));
        if (hn::AllTrue(Pixels(), hn::Eq(e, full))) {
            hn::StoreU(above, Pixels(), to);
            return;
        }
        const auto below = hn::LoadU(Pixels(), to);
        const auto covered = SpreadAlpha(below);
        if (hn::AllTrue(Pixels(), hn::Eq(e, none))) {
            hn::StoreU(hn::IfThenZeroElse(hn::Eq(covered, none), below), Pixels(), to);
            return;
        }
        const auto s = OddBytes(e);
        const auto rest = hn::Sub(hn::Set(Words(), 255), s);
        const bool opaque = hn::AllTrue(Pixels(), hn::Eq(covered, full));
        hn::StoreU(opaque ? OverOpaque(above, below, s, rest) : OverAny(above, below, s, rest), Pixels(), to);
    });
}

void Copy(uint8_t* HWY_RESTRICT destination, const uint8_t* HWY_RESTRICT source, size_t pixels,
          uint8_t transparency)
{
    const auto less = hn::Set(Pixels(), uint32_t{transparency} << 24);
    ForEachVector(destination, source, pixels, [&](uint32_t* to, const uint32_t* from) HWY_ATTR {
        hn::StoreU(LessAlpha(hn::LoadU(Pixels(), from), less), Pixels(), to);
    });
}

#endif

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(Weighted);
HWY_EXPORT(Over);
HWY_EXPORT(Copy);
} // namespace

void BlendRowWeighted(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    HWY_DYNAMIC_DISPATCH(Weighted)(destination, source, pixels, transparency);
}

void BlendRowOver(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    HWY_DYNAMIC_DISPATCH(Over)(destination, source, pixels, transparency);
}

void CopyRowLessTransparency(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    HWY_DYNAMIC_DISPATCH(Copy)(destination, source, pixels, transparency);
}

bool HasVectorInstructions()
{
    return (hwy::SupportedTargets() & ~(HWY_SCALAR | HWY_EMU128)) != 0;
}

#endif
