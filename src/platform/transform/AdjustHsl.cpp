// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AdjustHsl.h"

#include "platform/parallel/PictureBands.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/AdjustHsl.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

#ifndef PIXOLUNE_HSL_CHANGE
#define PIXOLUNE_HSL_CHANGE
namespace {

/// A quantity becomes value * scale + offset: drawn toward 0 or toward its largest value.
struct Draw {
    float scale = 1;
    float offset = 0;
};

struct HslChange {
    float sextants = 0; ///< 0 up to 6
    Draw saturation;    ///< of 0..1
    Draw lightness;     ///< of max + min, 0..510
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

template <typename D> HWY_INLINE hn::Vec<D> ChangePixels(D words, const HslChange& change, hn::Vec<D> pixel)
{
    const hn::Rebind<float, D> floats;
    const hn::Rebind<int32_t, D> integers;
    const auto set = [&](float value) { return hn::Set(floats, value); };
    const auto zero = hn::Zero(floats);
    const auto one = set(1);
    const auto channel = [&](auto shifted) {
        return hn::ConvertTo(floats, hn::BitCast(integers, hn::And(shifted, hn::Set(words, 255))));
    };
    const auto blue = channel(pixel);
    const auto green = channel(hn::ShiftRight<8>(pixel));
    const auto red = channel(hn::ShiftRight<16>(pixel));

    const auto most = hn::Max(hn::Max(red, green), blue);
    const auto least = hn::Min(hn::Min(red, green), blue);
    const auto sum = hn::Add(most, least);
    const auto chroma = hn::Sub(most, least);
    // A gray's chroma is 0: any divisor above 0 keeps it gray.
    const auto divisor = hn::Max(chroma, one);
    /// The largest chroma that the lightness leaves room for.
    const auto roomAt = [&](auto twiceLightness) {
        return hn::Sub(set(255), hn::Abs(hn::Sub(twiceLightness, set(255))));
    };

    const auto isRed = hn::Eq(most, red);
    const auto isGreen = hn::Eq(most, green);
    const auto ahead = hn::IfThenElse(isRed, green, hn::IfThenElse(isGreen, blue, red));
    const auto behind = hn::IfThenElse(isRed, blue, hn::IfThenElse(isGreen, red, green));
    const auto start = hn::IfThenElse(isRed, zero, hn::IfThenElse(isGreen, set(2), set(4)));
    const auto turned =
        hn::Add(hn::Add(hn::Div(hn::Sub(ahead, behind), divisor), start), set(change.sextants));
    const auto notNegative = hn::IfThenElse(hn::Lt(turned, zero), hn::Add(turned, set(6)), turned);
    const auto hue = hn::IfThenElse(hn::Ge(notNegative, set(6)), hn::Sub(notNegative, set(6)), notNegative);

    const auto saturation = hn::Div(chroma, hn::Max(roomAt(sum), one));
    const auto newSaturation = hn::IfThenElse(
        hn::Gt(chroma, zero),
        hn::Add(hn::Mul(saturation, set(change.saturation.scale)), set(change.saturation.offset)), zero);
    const auto newSum = hn::Add(hn::Mul(sum, set(change.lightness.scale)), set(change.lightness.offset));
    const auto newChroma = hn::Mul(newSaturation, roomAt(newSum));
    // Half a step for the rounding is added here, once for all channels.
    const auto floor = hn::Add(hn::Mul(hn::Sub(newSum, newChroma), set(0.5f)), set(0.5f));

    const auto level = [&](auto place) {
        const auto share = hn::Min(hn::Max(place, zero), one);
        const auto value = hn::Min(hn::Add(floor, hn::Mul(newChroma, share)), set(255.5f));
        return hn::BitCast(words, hn::ConvertTo(integers, value));
    };
    const auto newRed = level(hn::Sub(hn::Abs(hn::Sub(hue, set(3))), one));
    const auto newGreen = level(hn::Sub(set(2), hn::Abs(hn::Sub(hue, set(2)))));
    const auto newBlue = level(hn::Sub(set(2), hn::Abs(hn::Sub(hue, set(4)))));
    const auto colour = hn::Or(hn::Or(newBlue, hn::ShiftLeft<8>(newGreen)), hn::ShiftLeft<16>(newRed));
    return hn::Or(colour, hn::AndNot(hn::Set(words, 0xFFFFFF), pixel));
}

void ChangeRow(const HslChange& shared, const uint32_t* HWY_RESTRICT source, const ResultRow& changed)
{
    const HslChange change = shared; // of its own, which the stores below cannot change
    FillRowFrom(source, hn::ScalableTag<uint32_t>(), changed, [&](auto pixels, auto words, size_t) HWY_ATTR {
        return ChangePixels(words, change, pixels);
    });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(ChangeRow);
constexpr int kPixelsPerMicrosecond = 400;

Draw DrawOf(int percent, float largest)
{
    const float share = static_cast<float>(std::clamp(percent, -100, 100)) / 100;
    return share <= 0 ? Draw{1 + share, 0} : Draw{1 - share, share * largest};
}

} // namespace

CPackedDib AdjustDIBHSL(const CPackedDib& dib, int hue, int saturation, int lightness, IProgress* progress,
                        int /*flag*/)
{
    const int degrees = (hue % 360 + 360) % 360;
    const HslChange change{static_cast<float>(degrees) / 60, DrawOf(saturation, 1), DrawOf(lightness, 510)};
    const auto changeRow = HWY_DYNAMIC_DISPATCH(ChangeRow);
    CPackedDib adjusted =
        MapPictureRows(dib, kPixelsPerMicrosecond, [&](const uint32_t* source, const ResultRow& changed) {
            changeRow(change, source, changed);
        });
    if (progress != nullptr)
        progress->SetPosition(100);
    return adjusted;
}

#endif
