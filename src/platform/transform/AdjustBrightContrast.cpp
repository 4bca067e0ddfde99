// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AdjustBrightContrast.h"

#include "platform/parallel/PictureBands.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/AdjustBrightContrast.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <typename D>
HWY_INLINE void SpreadPixels(D floats, float gain, float shift, const uint32_t* HWY_RESTRICT source,
                             uint32_t* HWY_RESTRICT result)
{
    const hn::Rebind<uint32_t, D> words;
    const hn::Rebind<int32_t, D> integers;
    const auto pixel = hn::LoadU(words, source);
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
    hn::StoreU(hn::Or(hn::Or(blue, green), hn::Or(red, alpha)), words, result);
}

void SpreadRow(float gain, float shift, const uint32_t* HWY_RESTRICT source, uint32_t* HWY_RESTRICT result,
               size_t pixels)
{
    const hn::ScalableTag<float> floats;
    const size_t lanes = hn::Lanes(floats);
    size_t x = 0;
    for (; x + lanes <= pixels; x += lanes)
        SpreadPixels(floats, gain, shift, source + x, result + x);
    for (; x < pixels; ++x)
        SpreadPixels(hn::CappedTag<float, 1>(), gain, shift, source + x, result + x);
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
    CPackedDib adjusted = MapPictureRows(dib, kPixelsPerMicrosecond,
                                         [&](const uint32_t* source, uint32_t* result, size_t pixels) {
                                             spreadRow(gain, shift, source, result, pixels);
                                         });
    if (progress != nullptr)
        progress->SetPosition(100);
    return adjusted;
}

#endif
