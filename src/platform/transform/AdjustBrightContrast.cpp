// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AdjustBrightContrast.h"

#include "platform/parallel/PictureBands.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/AdjustBrightContrast.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

template <typename D> HWY_INLINE hn::Vec<D> SpreadPixels(D words, float gain, float shift, hn::Vec<D> pixel)
{
    const hn::Rebind<float, D> floats;
    const hn::Rebind<int32_t, D> integers;
    const auto spread = [&](auto shifted) {
        const auto level = hn::BitCast(integers, hn::And(shifted, hn::Set(words, 255)));
        const auto offMiddle = hn::Sub(hn::ConvertTo(floats, level), hn::Set(floats, 127.5f));
        const auto moved = hn::Add(hn::Mul(offMiddle, hn::Set(floats, gain)), hn::Set(floats, shift));
        const auto clamped = hn::Min(hn::Max(moved, hn::Zero(floats)), hn::Set(floats, 255.0f));
        return hn::BitCast(words, hn::ConvertTo(integers, hn::Add(clamped, hn::Set(floats, 0.5f))));
    };
    const auto blue = spread(pixel);
    const auto green = hn::ShiftLeft<8>(spread(hn::ShiftRight<8>(pixel)));
    const auto red = hn::ShiftLeft<16>(spread(hn::ShiftRight<16>(pixel)));
    const auto alpha = hn::AndNot(hn::Set(words, 0xFFFFFF), pixel);
    return hn::Or(hn::Or(blue, green), hn::Or(red, alpha));
}

void SpreadRow(float gain, float shift, const uint32_t* HWY_RESTRICT source, const ResultRow& spread)
{
    FillRowFrom(source, hn::ScalableTag<uint32_t>(), spread, [=](auto pixels, auto words, size_t) HWY_ATTR {
        return SpreadPixels(words, gain, shift, pixels);
    });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(SpreadRow);
constexpr int kPixelsPerMicrosecond = 1000;
constexpr int kMaxContrast = 127;

float GainOf(int contrast)
{
    constexpr auto kFull = static_cast<float>(kMaxContrast);
    if (contrast == kMaxContrast)
        return 255;
    const auto value = static_cast<float>(contrast);
    return contrast <= 0 ? (kFull + value) / kFull : kFull / (kFull - value);
}

} // namespace

CPackedDib AdjustDIBBrightAndConstract(const CPackedDib& dib, int brightness, int contrast,
                                       IProgress* progress, int /*flag*/)
{
    const float gain = GainOf(std::clamp(contrast, -kMaxContrast, kMaxContrast));
    const float shift = 127.5f + static_cast<float>(std::clamp(brightness, -255, 255));
    const auto spreadRow = HWY_DYNAMIC_DISPATCH(SpreadRow);
    CPackedDib adjusted =
        MapPictureRows(dib, kPixelsPerMicrosecond, [&](const uint32_t* source, const ResultRow& spread) {
            spreadRow(gain, shift, source, spread);
        });
    if (progress != nullptr)
        progress->SetPosition(100);
    return adjusted;
}

#endif
