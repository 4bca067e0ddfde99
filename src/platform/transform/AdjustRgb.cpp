// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AdjustRgb.h"

#include "platform/parallel/PictureBands.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/AdjustRgb.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

#ifndef PIXOLUNE_CHANNEL_STEPS
#define PIXOLUNE_CHANNEL_STEPS
namespace {

/// What is added to and then taken from the bytes of a pixel; one of both is 0.
struct ChannelSteps {
    uint32_t raise = 0;
    uint32_t lower = 0;
};

[[maybe_unused]] uint32_t StepPixel(const ChannelSteps& steps, uint32_t pixel)
{
    uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const auto byteOf = [shift](uint32_t word) { return static_cast<int>(word >> shift & 255); };
        const int sum = byteOf(pixel) + byteOf(steps.raise) - byteOf(steps.lower);
        result |= static_cast<uint32_t>(std::clamp(sum, 0, 255)) << shift;
    }
    return result;
}

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

void StepRow(const ChannelSteps& steps, const uint32_t* HWY_RESTRICT source, const ResultRow& stepped)
{
#if HWY_TARGET == HWY_SCALAR
    for (size_t x = 0; x < stepped.count; ++x)
        stepped.pixels[x] = StepPixel(steps, source[x]);
#else
    const uint32_t raise = steps.raise;
    const uint32_t lower = steps.lower;
    FillRowFrom(source, hn::ScalableTag<uint32_t>(), stepped, [&](auto pixels, auto words, size_t) HWY_ATTR {
        const hn::Repartition<uint8_t, decltype(words)> bytes;
        const auto raised =
            hn::SaturatedAdd(hn::BitCast(bytes, pixels), hn::BitCast(bytes, hn::Set(words, raise)));
        return hn::BitCast(words, hn::SaturatedSub(raised, hn::BitCast(bytes, hn::Set(words, lower))));
    });
#endif
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(StepRow);
constexpr int kPixelsPerMicrosecond = 2000;
} // namespace

CPackedDib AdjustDIBRGB(const CPackedDib& dib, int red, int green, int blue, IProgress* progress,
                        int /*flag*/)
{
    ChannelSteps steps;
    int shift = 0;
    for (const int value : {blue, green, red}) {
        steps.raise |= static_cast<uint32_t>(std::clamp(value, 0, 255)) << shift;
        steps.lower |= static_cast<uint32_t>(std::clamp(-value, 0, 255)) << shift;
        shift += 8;
    }
    const auto stepRow = HWY_DYNAMIC_DISPATCH(StepRow);
    CPackedDib adjusted =
        MapPictureRows(dib, kPixelsPerMicrosecond, [&](const uint32_t* source, const ResultRow& stepped) {
            stepRow(steps, source, stepped);
        });
    if (progress != nullptr)
        progress->SetPosition(100);
    return adjusted;
}

#endif
