// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/BlendStack.h"

#include "model/BlendRows.h"

#include <algorithm>
#include <array>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "model/BlendStack.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/cache_control.h>
#include <hwy/highway.h>
// After highway.h.
#include "model/BlendVectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

/// Every row, one after the other.
void BlendAll(uint8_t* destination, const RowStack& stack)
{
    std::array<StackedRow, kStackRows> rows;
    for (size_t i = 0; i < stack.count; ++i)
        rows[i] = stack.row(stack.context, i);
    for (size_t i = stack.count; i-- > 0;)
        BlendRowWeighted(destination, rows[i].pixels, kStackPixels, rows[i].transparency);
}

#if HWY_TARGET == HWY_SCALAR

void Blend(uint8_t* destination, const RowStack& stack)
{
    BlendAll(destination, stack);
}

#else

/// What rows let through when it is worth trying whether anything below them matters, and by how much less
/// the next try waits for. A channel has 8 bits, and rounding keeps some differences alive for longer.
constexpr float kFaint = 1.0F / (1 << 13);
constexpr float kFainter = 1.0F / (1 << 6);

constexpr size_t kPrefetchBytes = 1024;

using Floats = hn::RebindToFloat<Pixels>;

HWY_INLINE PixelVector LoadPixels(const StackedRow& row, size_t at)
{
    return hn::LoadU(Pixels(), reinterpret_cast<const uint32_t*>(row.pixels) + at);
}

/// Alphas less the row's transparency, in the alpha bytes.
HWY_INLINE PixelVector LessTransparency(const StackedRow& row, PixelVector pixels)
{
    return LessAlpha(pixels, hn::Set(Pixels(), uint32_t{row.transparency} << 24));
}

HWY_INLINE CWeightedPixels Weigh(const StackedRow& row, size_t at)
{
    const auto above = LoadPixels(row, at);
    return {above, SpreadAlpha(LessTransparency(row, above))};
}

/// Takes from `passed`, the share of light that comes through to each pixel, what a row keeps of it; whether
/// all of it has become less than a limit.
HWY_INLINE bool TakeLight(const StackedRow& row, float* HWY_RESTRICT passed, float limit)
{
    const Floats floats;
    const hn::RebindToSigned<Pixels> integers;
    auto most = hn::Zero(floats);
    for (size_t at = 0; at < kStackPixels; at += hn::Lanes(Pixels())) {
        const auto e = hn::ShiftRight<24>(LessTransparency(row, LoadPixels(row, at)));
        const auto kept =
            hn::Mul(hn::ConvertTo(floats, hn::BitCast(integers, e)), hn::Set(floats, 1.0F / 255));
        const auto before = hn::Load(floats, passed + at);
        const auto after = hn::NegMulAdd(before, kept, before);
        hn::Store(after, floats, passed + at);
        most = hn::Max(most, after);
    }
    return hn::AllTrue(floats, hn::Lt(most, hn::Set(floats, limit)));
}

/// Draws the rows onto black as well as onto white. No blend turns the order of two values, so a pixel that
/// becomes the same on both is the same on everything between. False, and nothing drawn, when one is not.
HWY_INLINE bool BlendHiding(uint8_t* HWY_RESTRICT destination, const StackedRow* rows, size_t count)
{
    HWY_ALIGN uint32_t drawn[kStackPixels];
    for (size_t at = 0; at < kStackPixels; at += hn::Lanes(Pixels())) {
        auto onBlack = hn::Zero(Pixels());
        auto onWhite = hn::Set(Pixels(), 0xFFFFFFFFu);
        size_t left = count;
        bool isSame = false;
        while (left > 0 && !isSame) {
            const CWeightedPixels above = Weigh(rows[--left], at);
            onBlack = above.Onto(onBlack);
            onWhite = above.Onto(onWhite);
            isSame = hn::AllTrue(Pixels(), hn::Eq(onBlack, onWhite));
        }
        if (!isSame)
            return false;
        while (left > 0)
            onBlack = Weigh(rows[--left], at).Onto(onBlack);
        hn::Store(onBlack, Pixels(), drawn + at);
    }
    std::copy_n(reinterpret_cast<const uint8_t*>(drawn), sizeof drawn, destination);
    return true;
}

void Blend(uint8_t* HWY_RESTRICT destination, const RowStack& stack)
{
    if (kStackPixels % hn::Lanes(Pixels()) != 0) {
        BlendAll(destination, stack);
        return;
    }
    std::array<StackedRow, kStackRows> rows;
    HWY_ALIGN float passed[kStackPixels];
    std::fill_n(passed, kStackPixels, 1.0F);
    float limit = kFaint;
    for (size_t count = 0; count < stack.count;) {
        const StackedRow row = stack.row(stack.context, count);
        rows[count++] = row;
        for (size_t at = 0; at < kStackPixels * 4; at += 64)
            hwy::Prefetch(row.pixels + kPrefetchBytes + at);
        if (!TakeLight(row, passed, limit))
            continue;
        if (BlendHiding(destination, rows.data(), count))
            return;
        limit *= kFainter;
    }
    for (size_t at = 0; at < kStackPixels; at += hn::Lanes(Pixels())) {
        auto* const pixels = reinterpret_cast<uint32_t*>(destination) + at;
        auto drawn = hn::LoadU(Pixels(), pixels);
        for (size_t left = stack.count; left-- > 0;)
            drawn = Weigh(rows[left], at).Onto(drawn);
        hn::StoreU(drawn, Pixels(), pixels);
    }
}

#endif

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(Blend);
} // namespace

void BlendStackWeighted(uint8_t* destination, const RowStack& stack)
{
    HWY_DYNAMIC_DISPATCH(Blend)(destination, stack);
}

#endif
